#pragma once

#include "VarnholtLib/Data/vrnList.h"

/// Lists of named geographic points in CSV files.
///
///     TNamedPointList stations;
///     stations.Add({u"Home", 174.75F, -36.85F});
///     stations.SaveToFile(u"C:\\data\\stations.csv");
///
///     TNamedPointList sites(u"Site", u"E", u"N");      // other columns
///     sites.LoadFromFile(u"C:\\data\\sites.csv");
///
/// A file has a header row and a row for each point. Written are three quoted columns, name, X and Y, with four
/// decimals, in UTF-8 without a byte-order mark and with CR LF; a quote in a name is not escaped. Read is any file
/// with commas whose header has the three names, in any order and among others; the names compare exactly. Numbers
/// follow the decimal separator of the process (FormatSettings.h) in both directions.
///
/// Threads: a list serves one thread at a time.
namespace Varnholt {

struct TNamedPoint {
    TNamedPoint() = default;
    TNamedPoint(StringView nameValue, float xValue, float yValue) : X(xValue), Y(yValue), Name(nameValue) {}

    float X = 0;
    float Y = 0;
    String Name;

    bool operator==(const TNamedPoint&) const = default;
};

/// The points in order, with the operations of a list.
class VARNHOLT_EXPORT TNamedPointList : public TInterfacedList<TNamedPoint> {
public:
    /// The columns NAME, LON for X and LAT for Y.
    TNamedPointList();
    TNamedPointList(StringView nameColName, StringView xColName, StringView yColName);

    [[nodiscard]] const String& GetXColName() const noexcept { return FXColName; }
    void SetXColName(StringView name) { FXColName = name; }
    [[nodiscard]] const String& GetYColName() const noexcept { return FYColName; }
    void SetYColName(StringView name) { FYColName = name; }
    [[nodiscard]] const String& GetNameColName() const noexcept { return FNameColName; }
    void SetNameColName(StringView name) { FNameColName = name; }

    /// Replaces the points by those of a file. The list is cleared first; after a failure it holds the rows before
    /// it. Raises what TCSVReader::FromFile and GetColumnIndexes raise, EConvertError for a cell that is no number,
    /// and ERangeError for a row without one of the three cells. A number beyond 32 bits becomes an infinity.
    void LoadFromFile(StringView fileName);
    /// Replaces the file as a whole or not at all. Raises as WriteFileInOneGo.
    void SaveToFile(StringView fileName) const;

private:
    String FXColName;
    String FYColName;
    String FNameColName;
};

}  // namespace Varnholt
