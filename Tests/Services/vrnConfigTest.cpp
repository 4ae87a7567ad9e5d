#include "VarnholtLib/Services/vrnConfig.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>

#include "Platform/Runtime/Files.h"
#include "Platform/System/Platform.h"
#include "Tests/Support/FormatSettingsScope.h"
#include "Tests/Support/Raised.h"
#include "Tests/Support/TemporaryFolder.h"

namespace Varnholt::Test {
namespace {

class Config : public testing::Test {
protected:
    std::string Saved(TVarnConfig& config) const {
        config.Save();
        return ReadWholeFile(FPath).substr(kHead.size());
    }

    static constexpr std::string_view kHead = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
    const TTemporaryDrive FDrive{u'T'};
    const String FPath = u"T:\\a.VrnConfig";
};

/// What one reading reports, as "CODE DETAIL".
template <typename TRead>
std::string Report(TVarnConfig& config, TRead read) {
    try {
        static_cast<void>(read());
    } catch (const EVarnConfig& error) {
        EXPECT_EQ(error.GetError(), config.GetLastError());
        EXPECT_EQ(error.GetData(), config.GetLastErrorData());
        return ToUtf8(error.GetMessage());
    }
    return "nothing";
}

TEST_F(Config, FileHoldsPathsTypesAndValues) {
    TVarnConfig config(FPath);
    EXPECT_TRUE(config.GetIsNewDocument());
    EXPECT_EQ(ReadWholeFile(FPath), std::string(kHead) + "<VrnConfig/>\n");
    config.Write(u"a", u"general");
    config.WriteString(u"main. size .text", u" two\r\nlines ");
    config.WriteInteger(u"main.size.int", -7);
    config.SetCurrentPath(u"main.size");
    config.WriteFloat(u".float", 1e30);
    config.WriteBoolean(u".flag", true);
    config.WriteString(u"main", u"own");
    config.Write(u"a", u"other", static_cast<TCfgDataType>(9));
    EXPECT_EQ(Saved(config),
              "<VrnConfig><a DataType=\"Unknown\">other</a><main DataType=\"String\">own<size>"
              "<text DataType=\"String\"> two&#13;\nlines </text><int DataType=\"Integer\">-7</int>"
              "<float DataType=\"Float\">1E30</float><flag DataType=\"Boolean\">true</flag>"
              "</size></main></VrnConfig>\n");
    TVarnConfig again(FPath);
    EXPECT_FALSE(again.GetIsNewDocument());
    EXPECT_EQ(again.ReadString(u"main.size.text"), u" two\r\nlines ");
    EXPECT_EQ(again.ReadInteger(u"main.size.int"), -7);
    EXPECT_EQ(again.ReadFloat(u"main.size.float"), 1e30);
    EXPECT_TRUE(again.ReadBoolean(u"main.size.flag"));
    EXPECT_EQ(again.ReadString(u"main"), u"own");
    again.SaveCopy(u"T:\\copy.VrnConfig");
    EXPECT_EQ(ReadWholeFile(u"T:\\copy.VrnConfig"), ReadWholeFile(FPath));
}

TEST_F(Config, ErrorsAreReportedWithTheirDetail) {
    TVarnConfig config(FPath);
    config.Write(u"a.general", u"7");
    config.WriteInteger(u"a.int", 7);
    config.Write(u"a.flag", u"yes", dtBoolean);
    config.Write(u"a.big", u"2147483648", dtInteger);
    config.SetCurrentPath(u"a");
    TCfgValue value;
    const std::pair<std::string, std::string> reports[] = {
        {Report(config, [&] { return config.ReadString(u"a.b"); }), "Value does not exist - a.b"},
        {Report(config, [&] { return config.ReadString(u".b.c"); }), "Path does not exist - a.b.c"},
        {Report(config, [&] { return config.ReadString(u".int"); }), "Type mismatch - .int"},
        {Report(config, [&] { return config.ReadString(u"a.general"); }), "Type mismatch - a.general"},
        {Report(config, [&] { return config.ReadBoolean(u"a.flag"); }),
         "Value data is not the correct type - yes"},
    };
    for (const auto& [report, expected] : reports) EXPECT_EQ(report, "VARN configuration error: " + expected);
    EXPECT_EQ(Report(config, [&] { return config.Read(u"a.int", value, dtGeneral); }), "nothing");
    EXPECT_EQ(value.Name + u" " + value.Data, u"int 7");
    EXPECT_EQ(value.DataType, dtInteger);
    EXPECT_EQ(config.GetLastError(), eSuccess);
    EXPECT_NE(Raised<EConvertError>([&] { static_cast<void>(config.ReadInteger(u"a.big")); }), u"");

    EXPECT_FALSE(config.ValueExists(u"a.none"));
    EXPECT_EQ(config.GetLastError(), eValueDoesntExist);
    EXPECT_TRUE(config.VerifyValue(u"a.int", dtInteger));
    EXPECT_FALSE(config.VerifyValue(u"a.flag", dtBoolean));
    EXPECT_EQ(config.GetErrorAction(), eaExcept);

    bool isRaising = false;
    StringView seen;
    config.SetErrorAction(eaEvent);
    EXPECT_EQ(config.ReadInteger(u"a.none"), 0);  // without an event
    config.SetErrorEvent([&](TVarnConfig& sender, const String& path, TCfgError error, bool& raiseError) {
        EXPECT_EQ(&sender, &config);
        EXPECT_EQ(path, u"a.none");
        EXPECT_EQ(error, eValueDoesntExist);
        seen = u"called";
        raiseError = isRaising;
    });
    EXPECT_EQ(Report(config, [&] { return config.ReadFloat(u"a.none"); }), "nothing");
    EXPECT_EQ(seen, u"called");
    isRaising = true;
    EXPECT_NE(Report(config, [&] { return config.ReadFloat(u"a.none"); }), "nothing");
}

TEST_F(Config, DefaultsAreWrittenAndNeverReported) {
    TVarnConfig config(FPath);
    config.WriteString(u"text", u"x");
    config.Write(u"flag", u"TRUE", dtBoolean);
    EXPECT_EQ(config.ReadInteger(u"a.int", 7), 7);
    EXPECT_EQ(config.ReadInteger(u"a.int", 8), 7);
    EXPECT_EQ(config.ReadInteger(u"text", 9), 9);
    EXPECT_EQ(config.ReadFloat(u"float", 2.5), 2.5);
    EXPECT_EQ(config.ReadString(u"a.string", u"default"), u"default");
    EXPECT_TRUE(config.ReadBoolean(u"flag", false));
    EXPECT_FALSE(config.ReadBoolean(u"other", false));
    EXPECT_EQ(config.GetLastError(), eSuccess);
    EXPECT_EQ(config.GetErrorAction(), eaExcept);
    EXPECT_EQ(Saved(config),
              "<VrnConfig><text DataType=\"Integer\">9</text><flag DataType=\"Boolean\">TRUE</flag>"
              "<a><int DataType=\"Integer\">7</int><string DataType=\"String\">default</string></a>"
              "<float DataType=\"Float\">2.5</float><other DataType=\"Boolean\">false</other></VrnConfig>\n");
}

TEST_F(Config, BooleansAndNumbersAreStrict) {
    TVarnConfig config(FPath);
    for (const auto& [text, value] : {std::pair{u"TRUE", true}, {u"1", true}, {u"-1", true}, {u"0", false}}) {
        config.Write(u"b", text, dtBoolean);
        EXPECT_EQ(config.ReadBoolean(u"b"), value) << ToUtf8(text);
    }
    const TFormatSettingsScope scope;
    FormatSettings().DecimalSeparator = u',';
    config.WriteFloat(u"f", 1.5);
    EXPECT_EQ(Report(config, [&] { return config.ReadFloat(u"f"); }),
              "VARN configuration error: Value data is not the correct type - 1,5");
}

TEST_F(Config, WhatIsRefusedChangesNothing) {
    TVarnConfig config(FPath);
    config.WriteString(u"a", u"x");
    const std::string before = Saved(config);
    ExpectRaised<EArgumentException>({
        {[&] { config.WriteString(u"", u"y"); }, u"The configuration path is empty"},
        {[&] { static_cast<void>(config.ReadString(u"a..b")); },
         u"Configuration path \"a..b\" has an empty step"},
        {[&] { config.WriteString(u"a.b. ", u"y"); }, u"Configuration path \"a.b. \" has an empty step"},
        {[&] { static_cast<void>(config.ValueExists(u".b")); },
         u"Configuration path \".b\" has an empty step"},
    });
    ExpectRaised<EXMLDocError>({
        {[&] { config.WriteString(u"b.c.1", u"y"); }, u"\"1\" is not an XML name"},
        {[&] { config.WriteString(u"b.c", u"\x02"); }, u"XML cannot hold character U+0002"},
    });
    EXPECT_EQ(Saved(config), before);
    TCfgValue value;
    config.WriteString(u"pointer", u"c.value");
    config.WriteString(u"c.value", u"x");
    EXPECT_TRUE(config.Read(u"pointer", value, dtString) && config.Read(value.Data, value, dtString));
    EXPECT_EQ(value.Data, u"x");
    EXPECT_FALSE(config.ValueExists(u"b.\u00E4"));
    config.WriteString(u"c", config.GetLastErrorData());  // a view of what the call resets
    EXPECT_EQ(config.ReadString(u"c"), u"b.\u00E4");
}

TEST_F(Config, ReadingSeesEveryChange) {
    TVarnConfig config(FPath);
    config.WriteString(u"a", u" ");
    EXPECT_EQ(config.ReadString(u"a"), u" ");
    config.WriteString(u" a", u"  ");
    EXPECT_EQ(config.ReadString(u"a"), u"  ");
    config.WriteInteger(u"a.b", 1);
    EXPECT_EQ(config.ReadString(u"a"), u"");  // white space between elements
    EXPECT_EQ(config.ReadInteger(u"a.b"), 1);
    config.SetCurrentPath(u"a");
    config.WriteInteger(u".b", 2);
    EXPECT_EQ(config.ReadInteger(u"a.b"), 2);
    std::shared_ptr<IXMLNode> node;
    EXPECT_TRUE(config.GetNode(u"a.b", false, node));
    node->SetText(u"3");
    EXPECT_EQ(config.ReadInteger(u"a.b"), 3);
    node->SetText(u"4");
    EXPECT_EQ(config.ReadInteger(u"a.b"), 4);
    EXPECT_TRUE(config.GetNode(u"n.m", false, node));
    EXPECT_EQ(node->GetNodeName(), u"m");
    EXPECT_TRUE(config.ValueExists(u"n"));
}

TEST_F(Config, KilledSavesLeaveOneOfTheFilesWhole) {
    TVarnConfig config(FPath);
    std::string contents[2];
    for (const int i : {0, 1}) {
        config.WriteString(u"a", String(20'000, i == 0 ? u'o' : u'n'));
        contents[i] = std::string(kHead) + Saved(config);
    }
    for (int kills = 0; kills < 200; ++kills) {
        const pid_t child = fork();
        if (child == 0) {
            for (int i = 0;; i = 1 - i) {
                config.WriteString(u"a", String(20'000, i == 0 ? u'o' : u'n'));
                config.Save();
            }
        }
        ASSERT_GT(child, 0);
        usleep(static_cast<useconds_t>(10 * kills));
        kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
        EXPECT_TRUE(std::ranges::count(contents, ReadWholeFile(FPath)) == 1) << kills;
    }
}

TEST_F(Config, FilesThatAreNotConfigurations) {
    const auto failure = [](const String& path) {
        return Raised<Exception>([&] { const TVarnConfig config(path); });
    };
    const String start = u"Unable to create or open configuration file - ";
    WriteFileInOneGo(FPath, "a,b\n");
    EXPECT_NE(failure(FPath).find(start + u"unable to load configuration file"), String::npos);
    EXPECT_EQ(ReadWholeFile(FPath), "a,b\n");
    WriteFileInOneGo(FPath, "<vrnConfig/>");
    try {
        throw EConvertError(u"unrelated");  // not the cause
    } catch (const EConvertError&) {
        EXPECT_EQ(failure(FPath), start + u"configuration file is not in the correct format");
    }
    EXPECT_NE(failure(u"T:\\none\\a").find(start + u"can not create base configuration file"), String::npos);
}

TEST_F(Config, NamedConfigurationsAreBelowTheFoldersOfTheSystem) {
    struct TFolders : IKnownFolders {
        String Find(TKnownFolder folder) override {
            return folder == kfLocalAppData ? u"T:\\local" : folder == kfCommonAppData ? u"T:\\common" : u"";
        }
    };
    const TPlatformScope scope;
    Platform().KnownFolders = std::make_shared<TFolders>();
    EXPECT_EQ(TVarnConfig::GenFileName(vPublic, u"P", u"n"), u"T:\\common\\Varnholt\\P\\n.VrnConfig");
    EXPECT_FALSE(TVarnConfig::ConfigFileExists(vPrivate, u"P", u"n"));
    const TVarnConfig config(vPrivate, u"P", u"n");
    EXPECT_EQ(config.GetFilename(), u"T:\\local\\Varnholt\\P\\n.VrnConfig");
    EXPECT_TRUE(TVarnConfig::ConfigFileExists(vPrivate, u"P", u"n"));
}

}  // namespace
}  // namespace Varnholt::Test
