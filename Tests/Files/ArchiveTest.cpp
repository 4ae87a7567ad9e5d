#include <gmock/gmock.h>

#include <array>
#include <filesystem>

#include "Platform/Runtime/Files.h"
#include "Platform/System/Platform.h"
#include "Tests/Support/Raised.h"
#include "Tests/Support/TemporaryFolder.h"
#include "VarnholtLib/Files/vrnCompress.h"

namespace Varnholt::Test {
namespace {

using testing::ElementsAre;

struct TLastLine : IDebugOutput {
    void Write(StringView text) override { Text = text; }
    String Text;
};

class Archive : public testing::Test {
protected:
    Archive() {
        Platform().DebugOutput = FDebug;
        ForceDirectories(u"T:\\in\\sub");
        WriteFileInOneGo(u"T:\\in\\a.txt", "hi");
        WriteFileInOneGo(u"T:\\in\\sub\\b.txt", std::string(3'000'000, 'b') + "\xC3\xA4");
    }

    /// The bytes of an archive with a.txt and sub\b.txt.
    std::string Packed(std::uint8_t level = 2) {
        TVarnCompressor compressor(u"T:\\in\\", true, false);
        compressor.SetCompressionLevel(level);
        compressor.AddFile(u"T:\\in\\a.txt");
        compressor.AddFile(u"T:\\in\\sub\\b.txt");
        compressor.SaveToFile(FPath);
        return ReadWholeFile(FPath);
    }

    /// An archive with a file of the content "hi" at level 0 under a name.
    void WriteNamed(std::string_view name, bool hasFolders = true) {
        std::string bytes = std::string("\x13\x0B\0\0\1\0\0\0", 8) + (hasFolders ? '\1' : '\0') +
                            std::string("\0\0\0\0z\0\0\0\xA5\x0A\0\0", 12) + static_cast<char>(name.size());
        bytes += std::string(name) + std::string(200 - name.size(), '\0');
        bytes += std::string("\x0D\0\0\0\2\0\0\0\xF2\0\0\0\0\0\0\0\xF1\x0A\0\0", 20);
        WriteFileInOneGo(FPath, bytes + std::string("x\1\1\2\0\xFD\xFFhi\1;\0\xD2", 13));
    }

    const TTemporaryDrive FDrive{u'T'};
    const TPlatformScope FScope;
    const std::shared_ptr<TLastLine> FDebug = std::make_shared<TLastLine>();
    const String FPath = u"T:\\x.vrn";
};

String OpenFailure(StringView path) {
    return Raised<EVarnCompress>([&] { const TVarnDecompressor archive(path); });
}

TEST_F(Archive, TheExampleOfTheFormat) {
    TVarnCompressor compressor;
    compressor.SetCompressionLevel(0);
    compressor.AddFile(u"T:\\in\\a.txt");
    compressor.SaveToFile(u"T:\\example.vrn");
    WriteNamed("a.txt", false);
    EXPECT_EQ(ReadWholeFile(u"T:\\example.vrn"), ReadWholeFile(FPath));
}

TEST_F(Archive, FilesComeBackAtEachLevel) {
    for (std::uint8_t level = 0; level <= 3; ++level) {
        SCOPED_TRACE(int{level});
        Packed(level);
        TVarnDecompressor archive(FPath);
        std::vector<std::pair<int, int>> progress;
        archive.SetOnProgress([&](int number, int total) { progress.emplace_back(number, total); });
        const String folder = u"T:\\out" + String(1, static_cast<Char>(u'0' + level));
        EXPECT_TRUE(archive.ExtractAllTo(folder));
        EXPECT_EQ(ReadWholeFile(folder + u"\\sub\\b.txt"), ReadWholeFile(u"T:\\in\\sub\\b.txt"));
        EXPECT_THAT(progress, ElementsAre(std::pair(1, 2), std::pair(2, 2)));
        EXPECT_EQ(archive.GetCompressionLevel(), level);
    }
    TVarnDecompressor archive(FPath);
    EXPECT_EQ(archive.GetEntryIndex(u"SUB\\B.TXT"), 1);
    EXPECT_EQ(archive.IndexOfFileName(u"A.TXT"), 0);
    String text;
    EXPECT_TRUE(archive.ExtractString(u"sub\\b.txt", text));
    EXPECT_EQ(text.back(), u'\u00E4');
    std::vector<std::byte> bytes(5);
    EXPECT_FALSE(archive.Extract(u"none", bytes));
    EXPECT_TRUE(bytes.empty());
    EXPECT_FALSE(archive.Extract(u"none", u"T:\\none") || archive.ExtractTo(u"none", u"T:\\"));
}

TEST_F(Archive, OverwritingIsAsked) {
    Packed();
    TVarnDecompressor archive(FPath);
    WriteFileInOneGo(u"T:\\a", "former");
    EXPECT_FALSE(archive.Extract(0, u"T:\\a"));
    bool isAllowed = false, isCancelled = false;
    archive.SetOnOverwriteRequest(
        [&](auto&, const String& file, const TFileEntry& entry, bool& allow, bool& cancel) {
            EXPECT_EQ(file + entry.FileName, u"T:\\aa.txt");
            EXPECT_TRUE(allow && !cancel);
            allow = isAllowed;
            cancel = isCancelled;
        });
    EXPECT_TRUE(archive.Extract(0, u"T:\\a"));  // skipped
    isCancelled = true;
    EXPECT_FALSE(archive.Extract(0, u"T:\\a"));
    TStringList log;
    archive.GetLog(log);
    EXPECT_EQ(log.GetCount(), 0);
    EXPECT_EQ(ReadWholeFile(u"T:\\a"), "former");
    isAllowed = true;
    EXPECT_TRUE(archive.Extract(0, u"T:\\a"));
    archive.GetLog(log);
    EXPECT_THAT(log, ElementsAre(u"T:\\a"));
    EXPECT_EQ(ReadWholeFile(u"T:\\a"), "hi");
}

TEST_F(Archive, TheListChecksWhatIsAdded) {
    TVarnCompressor compressor(u"T:\\in\\", true, true);
    compressor.AddFile(u"T:\\none");
    compressor.AddFile(u"T:\\in\\sub/b.txt");
    EXPECT_EQ(compressor.GetFileName(0).NewFileName, u"sub\\b.txt");
    EXPECT_EQ(compressor.IndexOfJustFileName(u"C:\\B.TXT"), 0);
    compressor.SetOnError([](TVarnBaseCompressor&, TCompressorError, bool& stop) { stop = false; });
    ExpectRaised<EVarnCompress>(
        {{[&] { compressor.AddFile(u"t:\\IN\\sub/b.txt"); }, u"This file is already in the source file list"},
         {[&] { compressor.AddFile(u"T:\\x", u"x"); }, u"(nothing raised)"},
         {[&] { compressor.AddFile(u"T:/in/a.txt", u"x"); },
          u"This was is not contained within the specified base directory"},
         {[&] { compressor.SaveToFile(u"T:\\none\\x"); }, u"The output archive file could not be created"}});
    EXPECT_EQ(compressor.GetLastError(), ceUnableToCreateArchive);
    compressor.AddFile(u"T:\\in\\a.txt", u"\u4E00");
    WriteFileInOneGo(FPath, "former");
    const String failure = Raised<Exception>([&] { compressor.SaveToFile(FPath); });
    EXPECT_EQ(failure, u"The name \"\u4E00\" cannot be stored in the code page windows-1252");
    EXPECT_EQ(ReadWholeFile(FPath), "former");
    EXPECT_NE(Raised<Exception>([&] { compressor.SaveToFile(u"T:\\new.vrn"); }), u"");
    EXPECT_EQ(TVarnDecompressor(u"T:\\new.vrn").GetFileEntryCount(), 1);  // what came before
    compressor.GetFileName(1).NewFileName = u"\\" + String(210, u'n');
    compressor.SetKeepSubfolders(false);
    compressor.AddFile(u"T:\\in\\a.txt", u"gone");
    compressor.GetFileName(2).FileName = u"T:\\none";
    compressor.SaveToFile(FPath);
    const TVarnDecompressor archive(FPath);
    EXPECT_EQ(archive.GetFileEntryCount(), 2);
    EXPECT_EQ(archive.GetFileEntryAt(1).FileName, String(200, u'n'));
}

TEST_F(Archive, NamesNeverLeaveTheFolder) {
    ForceDirectories(u"T:\\out");
    std::filesystem::create_symlink("..", FDrive.GetNativePath("out/link"));
    const auto files = [&] {
        std::filesystem::recursive_directory_iterator all(FDrive.GetNativePath());
        return std::distance(begin(all), end(all));
    };
    WriteNamed("x");
    const auto before = files();
    for (const std::string name :
         {"", "..", ".", "..\\x", "a\\..\\..\\x", "\\x", "\\\\host\\x", "/x", "T:\\x", "T:x", "a//x", "x\\",
          "../x", "NUL", "a\\com1.txt", "link\\x", "link", "a\nb", "x:y"}) {
        WriteNamed(name);
        TVarnDecompressor archive(FPath);
        FDebug->Text.clear();
        EXPECT_FALSE(archive.ExtractTo(0, u"T:\\out")) << name;
        EXPECT_TRUE(FDebug->Text.starts_with(u"Failed to extract: Index=0, NewFileName=T:\\out\\")) << name;
        EXPECT_EQ(files(), before) << name;
    }
    WriteNamed(std::string_view("a\0b", 3));
    EXPECT_FALSE(TVarnDecompressor(FPath).ExtractTo(0, u"T:\\out"));
    WriteNamed("..\\x", false);
    EXPECT_TRUE(TVarnDecompressor(FPath).ExtractTo(0, u"T:\\out"));
    EXPECT_EQ(ReadWholeFile(u"T:\\out\\x"), "hi");
    WriteNamed("sub\\x");
    EXPECT_TRUE(TVarnDecompressor(FPath).ExtractTo(0, FromUtf8(FDrive.GetNativePath("native"))));
    EXPECT_EQ(ReadWholeFile(u"T:\\native\\sub\\x"), "hi");
}

TEST_F(Archive, DamagedArchivesAreRefusedOrFail) {
    WriteFileInOneGo(u"T:\\in\\sub\\b.txt", "small");
    const std::string whole = Packed();
    const StringView invalid = u"The archive is not in a valid format.";
    for (std::size_t size = 0; size < whole.size(); ++size) {
        WriteFileInOneGo(FPath, whole.substr(0, size));
        const bool isOpened = size >= whole.size() - 13;  // cut in the data of the last file
        EXPECT_EQ(OpenFailure(FPath), isOpened ? StringView(u"(nothing raised)") : invalid) << size;
        EXPECT_TRUE(!isOpened || !TVarnDecompressor(FPath).Extract(1, u"T:\\cut")) << size;
    }
    for (std::size_t at = 0; at < whole.size(); ++at) {
        std::string changed = whole;
        changed[at] = static_cast<char>(~changed[at]);
        WriteFileInOneGo(FPath, changed);
        try {
            TVarnDecompressor archive(FPath);
            std::vector<String> errors;
            archive.ExtractAllTo(u"T:\\flipped", errors);
        } catch (const EVarnCompress& failure) {
            EXPECT_EQ(failure.GetMessage(), invalid) << at;
        }
    }
    WriteFileInOneGo(FPath, whole.substr(0, 17));
    EXPECT_EQ(OpenFailure(FPath), invalid);
    EXPECT_EQ(OpenFailure(u"T:\\none"), u"The archive cannot be accessed");
    // More comes out than the entry says: nothing is left.
    std::string bomb = whole;
    bomb[17 + 209] = 1;
    WriteFileInOneGo(FPath, bomb);
    TVarnDecompressor archive(FPath);
    EXPECT_FALSE(archive.Extract(0, u"T:\\bomb"));
    EXPECT_FALSE(FileExists(u"T:\\bomb"));
    TMemoryStream stream;
    EXPECT_EQ(Raised<EZDecompressionError>([&] { archive.Extract(0, stream); }),
              u"The compressed data contain more than the size of the file");
}

}  // namespace
}  // namespace Varnholt::Test
