#include "Platform/Runtime/Streams.h"

#include <fcntl.h>
#include <unistd.h>

#include "Platform/Runtime/Files.h"
#include "Platform/Runtime/TextStreams.h"
#include "Tests/Support/AllocationCount.h"
#include "Tests/Support/Raised.h"
#include "Tests/Support/TemporaryFolder.h"

namespace Varnholt::Test {
namespace {

std::string ReadText(TStream& stream, std::size_t size) {
    std::string text(size, '\0');
    text.resize(stream.Read(WritableBytesOf(text)));
    return text;
}

// Every stream keeps the same contract.
class StreamContractTest : public testing::TestWithParam<bool> {
protected:
    const TTemporaryFolder FFolder;
    TMemoryStream FMemory;
    TFileStream FFile{FFolder.GetPath(u"stream"), fmCreate};
    TStream& FStream = GetParam() ? static_cast<TStream&>(FMemory) : FFile;
};

INSTANTIATE_TEST_SUITE_P(MemoryAndFile, StreamContractTest, testing::Bool());

TEST_P(StreamContractTest, ReadsWhatWasWrittenAndFillsGaps) {
    FStream.SetPosition(3);
    EXPECT_EQ(FStream.GetSize(), 0);
    FStream.WriteBuffer(BytesOf("3456"));
    EXPECT_TRUE(FStream.GetPosition() == 7 && ReadText(FStream, 5).empty());
    EXPECT_TRUE(FStream.Seek(-3, soEnd) == 4 && ReadText(FStream, 5) == "456");
    FStream.SetPosition(2);
    EXPECT_EQ(FStream.Seek(2, soCurrent), 4);
    FStream.WriteBuffer(BytesOf("ab"));
    FStream.SetSize(8);
    EXPECT_EQ(FStream.GetPosition(), 6);
    FStream.SetPosition(0);
    std::string nine(9, ' ');
    EXPECT_THROW(FStream.ReadBuffer(WritableBytesOf(nine)), EReadError);
    EXPECT_EQ(nine, std::string("\0\0\0003ab6\0 ", 9));
    FStream.SetSize(2);
    for (const auto& [offset, origin] :
         {std::pair<std::int64_t, TSeekOrigin>{-1, soBeginning}, {-3, soEnd}, {INT64_MAX, soCurrent}})
        EXPECT_THROW(FStream.Seek(offset, origin), EStreamError);
    for (const std::int64_t size : {std::int64_t{-1}, INT64_MAX})
        EXPECT_THROW(FStream.SetSize(size), EStreamError);
    EXPECT_TRUE(FStream.GetPosition() == 2 && FStream.GetSize() == 2);
}

TEST_P(StreamContractTest, CopiesExactlyOrTheRest) {
    std::string text(2'500'000, 'a');
    text.back() = 'z';
    TMemoryStream source(BytesOf(text));
    source.SetPosition(1);
    for (const int count : {0, 2'000'000}) FStream.CopyFrom(source, count);
    EXPECT_EQ(FStream.GetSize(), 2'000'000);
    EXPECT_EQ(FStream.CopyRestFrom(source), 499'999);
    FStream.SetPosition(0);
    EXPECT_TRUE(ReadText(FStream, text.size()) == text.substr(1));
    source.SetPosition(0);
    EXPECT_THROW(FStream.CopyFrom(source, INT64_MAX), EReadError);
    EXPECT_THROW(FStream.CopyFrom(source, -1), EArgumentException);
    EXPECT_THROW(FStream.CopyFrom(FStream, 1), EArgumentException);
}

TEST(MemoryStreamTest, RefusesToGrowBeyondItsLimit) {
    TMemoryStream stream;
    for (const std::int64_t position : {INT64_MAX, std::int64_t{1} << 40}) {
        stream.SetPosition(position);
        EXPECT_THROW(stream.WriteBuffer(BytesOf("ab")), EWriteError) << position;
        EXPECT_TRUE(ReadText(stream, 1).empty() && stream.GetSize() == 0) << position;
    }
}

TEST(FileStreamTest, ModesKeepOrReplaceAndPositionsReachBeyondFourGiB) {
    const TTemporaryFolder folder;
    const String path = folder.GetPath(u"a.bin");
    const std::pair<TFileMode, StringView> cases[] = {{fmCreate, u"XY"},
                                                      {fmRewrite, u"XY"},
                                                      {fmAppend, u"123XY"},
                                                      {fmOpenWrite, u"XY3"},
                                                      {fmOpenReadWrite, u"XY3"}};
    for (const auto& [mode, expected] : cases) {
        WriteFileInOneGo(path, "123");
        TFileStream(path, mode).WriteBuffer(BytesOf("XY"));
        EXPECT_EQ(ReadWholeFile(path), ToUtf8(expected)) << mode;
    }
    TFileStream file(path, fmOpenReadWrite);  // becomes a sparse file
    constexpr std::int64_t kFar = (std::int64_t{5} << 30) + 7;
    file.SetPosition(kFar);
    file.WriteBuffer(BytesOf("far"));
    EXPECT_TRUE(file.Seek(-3, soEnd) == kFar && ReadText(file, 9) == "far");
}

TEST(FileStreamTest, FailuresNameThePathAndTheReason) {
    const TTemporaryDrive drive(u'D');
    WriteFileInOneGo(u"D:\\file", "abc");
    ForceDirectories(u"D:\\folder");
    // clang-format off
    const std::tuple<TFileMode, String, StringView> cases[] = {
        {fmOpenRead, u"D:\\no\\y.csv", u"No such file or directory"},
        {fmOpenRead, u"D:\\folder", u"Is a directory"}, {fmOpenRead, u"Q:\\x", u"Drive Q: is not known"},
        {fmOpenWrite, u"D:/no", u"No such file or directory"}, {fmAppend, u"D:\\folder", u"Is a directory"},
        {fmCreate, u"D:\\file\\y", u"Not a directory"}, {fmRewrite, u"D:\\folder", u"Is a directory"}};
    // clang-format on
    for (const auto& [mode, path, reason] : cases) {
        const auto open = [&, mode = mode, path = path] { TFileStream(path, mode); };
        const bool creates = mode == fmCreate || mode == fmRewrite;
        EXPECT_EQ(
            creates ? Raised<EFCreateError>(open) : Raised<EFOpenError>(open),
            (creates ? u"Cannot create file \"" : u"Cannot open file \"") + path + u"\": " + String(reason));
    }
    TFileStream file(u"D:\\file", fmOpenRead), full(u"/dev/full", fmCreate);
    std::string four(4, ' ');
    EXPECT_EQ(Raised<EReadError>([&] { file.ReadBuffer(WritableBytesOf(four)); }),
              u"Cannot read file \"D:\\file\": Unexpected end of file");
    EXPECT_EQ(Raised<EWriteError>([&] { full.WriteBuffer(BytesOf("x")); }),
              u"Cannot write file \"/dev/full\": No space left on device");
    for (int i = 0; i < 2; ++i) file.Close();
    EXPECT_EQ(Raised<EStreamError>([&] { ReadText(file, 1); }),
              u"Cannot use file \"D:\\file\": It is closed");
}

TEST(FileStreamTest, FailuresCloseTheFile) {
    const TTemporaryDrive drive(u'D');
    WriteFileInOneGo(u"D:\\file", "abc");
    const std::ptrdiff_t before = OpenDescriptors();
    const std::function<void()> calls[] = {
        [] { TStreamReader(u"D:\\file"); }, [] { TStreamWriter(u"D:\\out", TEncoding::ForName(u"latin2")); },
        [] { static_cast<void>(TFileStream::StandardInput()); },
        [] { Raised<EFOpenError>([] { static_cast<void>(ReadWholeFile(u"D:")); }); }};
    for (const auto& call : calls)
        FailEachAllocation(call, [&] { EXPECT_EQ(OpenDescriptors(), before) << &call - calls; });
}

/// Puts a file in the place of a standard descriptor; without a path, closes it.
class TRedirection {
public:
    TRedirection(int handle, const char* path) : FHandle(handle), FFormer(fcntl(handle, F_DUPFD, 100)) {
        close(handle);
        if (path != nullptr) static_cast<void>(open(path, O_RDWR | O_CREAT, 0600));
    }
    ~TRedirection() {
        dup2(FFormer, FHandle);
        close(FFormer);
    }

private:
    int FHandle, FFormer;
};

TEST(StandardStreamTest, UsesTheDescriptorsOfTheProcess) {
    const TTemporaryFolder folder;
    const std::string file = folder.GetNativePath("file");
    String full, noInput, noOutput;
    {
        const TRedirection output(STDOUT_FILENO, file.c_str());
        for (const char* text : {"ab", "cd"}) {
            const auto stream = TFileStream::StandardOutput();
            stream->WriteBuffer(BytesOf(text));
            stream->Close();  // leaves the descriptor of the process open
        }
    }
    {
        const TRedirection output(STDOUT_FILENO, "/dev/full"), input(STDIN_FILENO, nullptr);
        full = Raised<EWriteError>([] { TFileStream::StandardOutput()->WriteBuffer(BytesOf("x")); });
        noInput = Raised<EFOpenError>([] { static_cast<void>(TFileStream::StandardInput()); });
        close(STDOUT_FILENO);
        noOutput = Raised<EFCreateError>([] { static_cast<void>(TFileStream::StandardOutput()); });
    }
    EXPECT_EQ(full, u"Cannot write standard output: No space left on device");
    EXPECT_EQ(noInput, u"Cannot open standard input: Bad file descriptor");
    EXPECT_EQ(noOutput, u"Cannot create standard output: Bad file descriptor");
    const TRedirection input(STDIN_FILENO, file.c_str());
    EXPECT_EQ(ReadText(*TFileStream::StandardInput(), 9), "abcd");
}

}  // namespace
}  // namespace Varnholt::Test
