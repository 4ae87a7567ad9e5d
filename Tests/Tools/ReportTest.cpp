#include <gmock/gmock.h>

#include <chrono>
#include <cmath>
#include <map>
#include <regex>
#include <sstream>

#include "Tests/Tools/ProgramTest.h"

namespace Varnholt::Test {
namespace {

using namespace ::testing;

constexpr const char* kHeader = "date,temp_max,temp_min,precipitation\n";
const std::string kNorth = "--latitude '47 DEG 36 MIN N' ";
constexpr const char* kSunshine =
    " --sunshine 69.8,108.8,178.4,207.3,253.7,268.4,312.0,281.4,221.7,142.6,72.7,52.9";

constexpr const char* kQuantities =
    "quantity rows missing_tmax missing_tmin missing_precipitation implausible_temperature "
    "maximum_below_minimum negative_precipitation precipitation_above_2000_mm first_date last_date latitude "
    "tmax_mean tmax_sd tmax_min tmax_max tmin_mean tmin_sd precipitation_mean precipitation_sd "
    "precipitation_max corr_tmax_tmin tmax_ppcc tmax_ks monthly_precipitation_gamma_alpha "
    "monthly_precipitation_gamma_beta monthly_precipitation_p10 monthly_precipitation_p50 "
    "monthly_precipitation_p90 yearly_tmean_slope yearly_tmean_intercept monthly_tmean_slope halves_t "
    "halves_t_prob halves_f halves_f_prob annual_pet ";

class ReportTest : public TProgramTest {
protected:
    ReportTest() : TProgramTest("report") {}

    /// Runs the program on a file of that content and returns its exit status.
    int Report(const std::string& content, const std::string& arguments) {
        Write(u"station.csv", content);
        return Run("station.csv " + arguments);
    }

    std::string Printed() { return Content(u"printed"); }
    std::string Reported() { return Content(u"reported"); }

    /// The rows of a written file, each cut at its first comma.
    std::map<std::string, std::string> Written(StringView name) {
        std::istringstream text(Content(name));
        std::map<std::string, std::string> rows;
        for (std::string line; std::getline(text, line);) {
            rows[line.substr(0, line.find(','))] = line.substr(line.find(',') + 1);
        }
        return rows;
    }

    /// The names in summary.csv, each with a blank after it.
    std::string Quantities() { return std::regex_replace(Content(u"summary.csv"), std::regex(",.*\n"), " "); }
};

using namespace std::chrono;

/// A file with a row for each day: the maximum, the minimum 10 degrees below it, and the precipitation.
template <typename TWeather>
std::string Daily(sys_days first, sys_days last, TWeather weather) {
    std::ostringstream text;
    text << kHeader;
    for (sys_days day = first; day <= last; day += days(1)) {
        const year_month_day date(day);
        const auto [maximum, rain] = weather(date);
        text << int(date.year()) * 10000 + int(unsigned(date.month()) * 100 + unsigned(date.day())) << ','
             << maximum << ',' << maximum - 10 << ',' << rain << '\n';
    }
    return text.str();
}

/// Half a degree warmer each year; the 1st of a month has ten times its number in mm, the 2nd 1 mm, the 3rd
/// 0.9 mm.
std::string ThreeYears() {
    return Daily(2022y / 1 / 1, 2024y / 12 / 31, [](year_month_day date) {
        const unsigned day(date.day()), month(date.month());
        const double rain = day == 1 ? 10 * month : day == 2 ? 1 : day == 3 ? 0.9 : 0;
        return std::pair(20 + (int(date.year()) - 2022) * 0.5, rain);
    });
}

TEST_F(ReportTest, SummaryHoldsTheFiguresInOrder) {
    ASSERT_EQ(Report(ThreeYears(), kNorth + "--out new/out" + kSunshine), 0) << Reported();
    auto rows = Written(u"new/out/summary.csv");
    const std::pair<const char*, const char*> exact[] = {
        // clang-format off
        {"quantity", "value"}, {"rows", "1096"}, {"missing_tmax", "0"}, {"first_date", "2022-01-01"},
        {"last_date", "2024-12-31"}, {"latitude", "47.6"},
        {"tmax_mean", "20.50046"},  // 20 + 0.5 (365 + 2 * 366) / 1096
        {"yearly_tmean_slope", "0.5"}, {"yearly_tmean_intercept", "14.5"}};
    // clang-format on
    for (const auto& [name, value] : exact) EXPECT_EQ(rows[name], value) << name;
    EXPECT_THAT(Printed(), HasSubstr("  evidence of a difference in mean temperature"));
    EXPECT_THAT(Printed(), HasSubstr(" per year over 3 full years\n"));
    EXPECT_THAT(Written(u"new/out/monthly.csv")["12"],
                HasSubstr(",121.9,2,"));  // precipitation, days of 1 mm or more
    EXPECT_EQ(Written(u"new/out/yearly.csv")["2024"], "366,16,802.8");
}

// Computed from the formulas with 30 digits by another program. 32-bit sums over 1461 days are off by up to
// 6e-6.
TEST_F(ReportTest, SampleStationAgreesWithAnotherComputation) {
    const std::string station = "'" VARNHOLT_SOURCE_DIR "/Examples/data/seattle-weather.csv' ";
    ASSERT_EQ(Run(station + kNorth + "--out ." + kSunshine), 0) << Reported();
    const std::pair<const char*, double> cases[] = {// clang-format off
        {"rows", 1461}, {"tmax_mean", 16.439083}, {"tmax_sd", 7.3497581}, {"tmax_min", -1.6}, {"tmax_max", 35.6},
        {"tmin_mean", 8.2347707}, {"tmin_sd", 5.0230042}, {"precipitation_mean", 3.0294319},
        {"precipitation_sd", 6.6801943}, {"precipitation_max", 55.9}, {"corr_tmax_tmin", 0.87568666},
        {"tmax_ppcc", 0.99023026}, {"tmax_ks", 0}, {"monthly_precipitation_gamma_alpha", 1.3710741},
        {"monthly_precipitation_gamma_beta", 70.176645}, {"monthly_precipitation_p10", 11.257797},
        {"monthly_precipitation_p50", 70.342441}, {"monthly_precipitation_p90", 201.64265},
        {"yearly_tmean_slope", 0.6268492}, {"yearly_tmean_intercept", 10.770525},
        {"monthly_tmean_slope", 0.068802356}, {"halves_t", -0.79519456}, {"halves_t_prob", 0.43058445},
        {"halves_f", 1.0596352}, {"halves_f_prob", 0.89072415}, {"annual_pet", 1145.6263}};
    // clang-format on
    auto rows = Written(u"summary.csv");
    for (const auto& [name, value] : cases) {
        EXPECT_NEAR(std::stod(rows[name]), value, 1e-5 * std::fabs(value)) << name;
    }
    std::istringstream july(Written(u"monthly.csv")["7"]);
    const std::pair<const char*, double> columns[] = {// clang-format off
        {"mean_temperature", 20.097984}, {"precipitation", 12.05}, {"wet_days", 1.75}, {"day_length", 15.429222},
        {"extraterrestrial_radiation", 41.5146}, {"surface_radiation", 23.811685}, {"pet", 192.79586}};
    // clang-format on
    for (const auto& [name, value] : columns) {
        std::string cell;
        std::getline(july, cell, ',');
        EXPECT_NEAR(std::stod(cell), value, 1e-6 * value) << name;
    }
}

TEST_F(ReportTest, GapsAndWordsAreMissing) {
    std::string text = ThreeYears();
    const auto replace = [&](const std::string& from, const std::string& to) {
        text.replace(text.find(from), from.size(), to);  // raises with a place of npos
    };
    replace("\n20220110,20,10,0\n", "\n");              // no row: January and 2022 are not full
    replace("20220205,20,10,0", "20220205,wet, 10 ,");  // February neither
    replace("20230301,20.5,10.5,30", "20230301,-1000.00001,NA,-1000");  // codes in 32 bits
    replace("20240401,21,11,40", "20240401,1e39");                      // beyond a float, and a short row
    ASSERT_EQ(Report(text, "--latitude 33.5S --out ."), 0) << Reported();
    EXPECT_EQ(
        Reported(),
        "varnholt: station.csv, line 822: The row has fewer cells than the header, and the others count as "
        "missing; rows: 1\nvarnholt: station.csv, line 36: \"wet\" in column temp_max is not a number and "
        "counts as missing; "
        "cells: 2\n");
    EXPECT_THAT(Printed(), HasSubstr("1095 rows, 1 day without a row\nLatitude     -33.5000\n"
                                     "Missing      3 maxima, 2 minima, 3 precipitation values\n"));
    EXPECT_THAT(Printed(), HasSubstr("shape of a gamma distribution fitted to 32 monthly totals"));
    EXPECT_THAT(Printed(), ContainsRegex("yearly_tmean_slope +-999  not calculated: it needs the mean"));
    EXPECT_THAT(Printed(), HasSubstr(" per month over 36 months; no"));
    EXPECT_THAT(Printed(), HasSubstr("omitted: they need the sunshine hours"));
    EXPECT_EQ(Written(u"summary.csv")["annual_pet"], "-999");
    EXPECT_EQ(Written(u"yearly.csv")["2022"], "364,-999,-999");
    EXPECT_THAT(Written(u"monthly.csv")["1"], AllOf(HasSubstr(",11.9,2,"), HasSubstr(",-999,-999")));
}

TEST_F(ReportTest, DryMonthsAndUnequalHalves) {
    const std::string text = Daily(2023y / 1 / 1, 2023y / 5 / 31, [](year_month_day date) {
        constexpr double maxima[] = {5, 7, 5, 7, 7.75};  // of the halves the variances are about equal
        const unsigned month(date.month());
        return std::pair(maxima[month - 1], month <= 2 && date.day() == day(1) ? 10.0 * month : 0.0);
    });
    ASSERT_EQ(Report(text, "--latitude 0 --out ."), 0) << Reported();
    auto rows = Written(u"summary.csv");
    EXPECT_EQ(rows["monthly_precipitation_p50"], "0");
    EXPECT_EQ(rows["monthly_precipitation_p90"].substr(0, 5), "18.05");  // the 75th percentile of the fit
    EXPECT_EQ(rows["halves_f_prob"], "1");                               // twice a tail of 0.58
    EXPECT_THAT(Printed(), HasSubstr("fitted to the 2 of 5 monthly totals that are above 0 mm\n"));
    EXPECT_THAT(Printed(), HasSubstr("; the halves hold different calendar months)\n"));
}

TEST_F(ReportTest, ImplausibleValuesAreCountedAndReported) {
    const std::string text = std::string(kHeader) +
                             "2024-01-01,-9999,-9999.0,-99.9\n"  // missing, as nobody declared
                             "2024-01-02,65,-95,2000\n"          // just possible
                             "2024-01-03,65.1,-95.1,2000.1\n"
                             "2024-01-04,3,3,0\n"
                             "2024-01-05,2.9,3,-0.1\n";
    EXPECT_EQ(Report(text, "--latitude 0 --out ."), 0);
    EXPECT_EQ(
        Reported(),
        "varnholt: station.csv, line 2: \"-9999\" in column temp_max is outside -95 to 65 degrees and is "
        "used as it is; cells: 4\n"
        "varnholt: station.csv, line 6: \"2.9\" in column temp_max is below the minimum of the day and is "
        "used as it is; cells: 1\n"
        "varnholt: station.csv, line 2: \"-99.9\" in column precipitation is negative and is used as it "
        "is; cells: 2\n"
        "varnholt: station.csv, line 4: \"2000.1\" in column precipitation is above 2,000 mm and is used "
        "as it is; cells: 1\n"
        "varnholt: If any of -9999,-99.9 stands for a missing value, use --missing=-9999,-99.9\n");
    EXPECT_THAT(Content(u"summary.csv"),
                HasSubstr("\nimplausible_temperature,4\nmaximum_below_minimum,1\nnegative_precipitation,2\n"
                          "precipitation_above_2000_mm,1\n"));
    EXPECT_EQ(Run("- --latitude 0 --missing=-9999,-99.9 <station.csv"), 0);
    EXPECT_THAT(Printed(), StartsWith("Report on standard input\n"));
    EXPECT_THAT(
        Printed(),
        HasSubstr("Missing      1 maximum, 1 minimum, 1 precipitation value\nImplausible  2 temperatures"));
    EXPECT_THAT(Reported(), Not(HasSubstr("--missing")));
}

TEST_F(ReportTest, ChartsAreDrawn) {
    EXPECT_EQ(Report(ThreeYears(), "--latitude 47 --chart c.svg"), 0);
    EXPECT_THAT(Content(u"c.svg"), HasSubstr("width=\"800px\" height=\"1000px\""));
    std::string days = kHeader;
    for (int day = 1; day <= 31; ++day)
        days += "2001-01-" + std::to_string(day / 10) + std::to_string(day % 10) + ",2,1,1e38\n";
    EXPECT_EQ(Report(days, "--latitude 47 --chart c.svg"), 0);  // the month's total is infinite
}

TEST_F(ReportTest, FilesAreReplacedTogether) {
    Write(u"station.csv", ThreeYears());
    ForceDirectories(Folder.GetPath(u"out/summary.csv"));  // no file can take its place
    Write(u"out/monthly.csv", "former");
    EXPECT_EQ(Run("station.csv --latitude 0 --out out"), 1);
    EXPECT_EQ(Content(u"out/monthly.csv"), "former");
    EXPECT_FALSE(FileExists(Folder.GetPath(u"out/yearly.csv")));
    const std::string report = "'" VARNHOLT_PROGRAM "' report station.csv --latitude 0 ";
    Write(u"former.csv", "former");
    EXPECT_EQ(Run("--help; mkdir hard; ln former.csv hard/yearly.csv; " + report + "--out hard"), 1);
    EXPECT_THAT(Reported(), HasSubstr("It cannot be replaced together with the other files"));
    EXPECT_EQ(Content(u"former.csv"), "former");
    EXPECT_EQ(Run("--help; mkdir d; ln -s yearly.csv d/monthly.csv; " + report + "--out d"), 1);
    EXPECT_FALSE(FileExists(Folder.GetPath(u"d/yearly.csv")));
    EXPECT_EQ(Run("--help; mkdir s; " + report + "--out s >s/summary.csv"), 1);
    Write(u"summary.csv", ThreeYears());
    EXPECT_EQ(Run("- --latitude 0 --out . <summary.csv"), 1);
    EXPECT_THAT(Reported(), HasSubstr("summary.csv\": It is also the input"));
    // A full disk: not a byte can be written.
    EXPECT_EQ(Run("--help; trap '' XFSZ; ulimit -f 0; " + report + "--out new/out >/dev/null"), 1);
    EXPECT_FALSE(DirectoryExists(Folder.GetPath(u"new")));
}

TEST_F(ReportTest, LittleDataGivesReasonsAndNoNaN) {
    const std::string dry = "2024-02-28,5,5,0\n2024-02-29,5,5,0\n2024-03-01,5,5,0\n";
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"2024-02-29,5,1,0\n", "tmax_sd +-999  not calculated: there is only one value"},
        {"2024-02-29,,,\n", "tmax_mean +-999  not calculated: there are no values"},
        {dry, "tmax_ppcc +-999  not calculated: all values are equal"},
        {"2024-02-29,1e38,-1e38,1e38\n2024-03-01,-1e38,1e38,0\n",
         "corr_tmax_tmin +-999  not calculated: it needs three days"},
    };
    for (const auto& [days, line] : cases) {
        EXPECT_EQ(Report(kHeader + days, "--latitude 90 --out ." + std::string(kSunshine)), 0) << Reported();
        EXPECT_THAT(Printed(), ContainsRegex(line)) << days;
        EXPECT_EQ(Quantities(), kQuantities) << days;
        for (const StringView file : {u"printed", u"summary.csv", u"monthly.csv", u"yearly.csv"}) {
            const std::string written = ReadWholeFile(Folder.GetPath(file));
            EXPECT_THAT(written, Not(ContainsRegex("[ ,-]([nN][aA][nN]|[iI][nN][fF])([ \n,]|$)"))) << days;
        }
    }
}

TEST_F(ReportTest, BadInputIsReported) {
    struct TCase {
        std::string Content, Arguments, Message;
        int Status = 1;
    };
    const std::string header = kHeader, north = "--latitude 47.6 ", day = header + "20240102,1,0,0\n";
    const std::vector<TCase> cases = {
        // clang-format off
        {header, north, "station.csv has a header and no rows"},
        {"d,temp_max\n", north + "--columns date=d,tmin=low", "station.csv: Column \"low\" not found"},
        {header + "\n2023-02-29,1,0,0\n", north, "station.csv, line 3: \"2023-02-29\" is not a date"},
        {header + "2024-2-9,1,0,0\n", north, "line 2: \"2024-2-9\" is not a date"},
        {day + "2024-01-02,1,0,0\n", north, "line 3: 2024-01-02 appears twice"},
        {day + "20240101,1,0,0\n", north, "line 3: 2024-01-01 comes after 2024-01-02; rows must be in"},
        {header, "--latitude north", "--latitude: \"north\" is not a latitude from -90 to 90", 2},
        {header, "--latitude 90.5", "--latitude: \"90.5\" is not a latitude from -90 to 90", 2},
        {header + "20240102,1,0,0,5\n", north, "line 2: Row 1 has 5 cells, the header has 4"},
        {day, north + ">>station.csv", "Cannot write standard output: It is also the input"},
        {header, "", "--latitude", 2},
        {header, north + "--columns tmean=x", "\"tmean=x\" is not date=, tmax=, tmin= or precip", 2},
        {header, north + "--columns tmin=a,tmin=b", "--columns: \"tmin=b\" gives a column a second time", 2},
        {"d,t\n", north + "--columns date=d,tmax=x,y=,tmin=t", "Column \"x,y=\" not found"},
        {header, north + "--out -", "--out: takes a folder", 2},
        {header, north + "--sunshine ''", "--sunshine: takes 12 numbers, not 0", 2},
        {header, north + kSunshine + " --angstrom 0.2,x", "\"x\" is not a number of 0 or more", 2},
        {day, north + "--out ''", "Cannot create folder \"\""},
        {day, north + "--out station.csv", "station.csv"},
        {"date,temp_max,temp_min,r\xE9gen\n20240102,1,0,0\n",
         north + "--encoding windows-1252 --columns precipitation=r\xC3\xA9gen", "", 0},
        // clang-format on
    };
    for (const TCase& tested : cases) {
        EXPECT_EQ(Report(tested.Content, tested.Arguments), tested.Status) << tested.Arguments;
        EXPECT_THAT(Reported(), HasSubstr(tested.Message));
    }
}

}  // namespace
}  // namespace Varnholt::Test
