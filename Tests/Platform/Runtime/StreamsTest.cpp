#include "Platform/Runtime/Streams.h"

#include <fcntl.h>
#include <unistd.h>

#include "Platform/Runtime/Files.h"
#include "Tests/Support/Raised.h"
#include "Tests/Support/TemporaryFolder.h"

namespace Varnholt::Test {
namespace {

std::string ReadText(TStream& stream, std::size_t size) {
    std::string text(size, '\0');
    text.resize(stream.Read(WritableBytesOf(text)));
    return text;
}

// Every stream keeps to the same contract.
void OnEachStream(const std::function<void(TStream&)>& check) {
    const TTemporaryFolder folder;
    TMemoryStream memory;
    TFileStream file(folder.GetPath(u"stream"), fmCreate);
    for (TStream* stream : {static_cast<TStream*>(&memory), static_cast<TStream*>(&file)}) {
        SCOPED_TRACE(stream == &memory ? "memory" : "file");
        check(*stream);
    }
}

TEST(StreamContractTest, ReadsWhatWasWrittenUpToTheEnd) {
    OnEachStream([](TStream& stream) {
        stream.WriteBuffer(BytesOf("0123456789"));
        EXPECT_TRUE(stream.GetPosition() == 10 && ReadText(stream, 5).empty());
        EXPECT_TRUE(stream.Seek(-3, soEnd) == 7 && ReadText(stream, 5) == "789");
        stream.SetPosition(2);
        EXPECT_EQ(stream.Seek(2, soCurrent), 4);
        stream.WriteBuffer(BytesOf("ab"));
        stream.SetPosition(0);
        std::string eleven(11, ' ');
        EXPECT_THROW(stream.ReadBuffer(WritableBytesOf(eleven)), EReadError);
        EXPECT_EQ(eleven, "0123ab6789 ");
    });
}

TEST(StreamContractTest, GapsAreFilledAndImpossiblePositionsRejected) {
    OnEachStream([](TStream& stream) {
        stream.SetPosition(3);
        EXPECT_EQ(stream.GetSize(), 0);
        stream.WriteBuffer(BytesOf("x"));
        stream.SetSize(6);
        EXPECT_EQ(stream.GetPosition(), 4);
        stream.SetPosition(0);
        EXPECT_EQ(ReadText(stream, 9), std::string("\0\0\0x\0\0", 6));
        stream.SetSize(2);
        for (const auto& [offset, origin] :
             {std::pair<std::int64_t, TSeekOrigin>{-1, soBeginning}, {-3, soEnd}, {INT64_MAX, soCurrent}})
            EXPECT_THROW(stream.Seek(offset, origin), EStreamError);
        for (const std::int64_t size : {std::int64_t{-1}, INT64_MAX})
            EXPECT_THROW(stream.SetSize(size), EStreamError);
        EXPECT_TRUE(stream.GetPosition() == 2 && stream.GetSize() == 2);
    });
}

TEST(StreamContractTest, CopiesExactlyOrTheRest) {
    std::string text(2'500'000, 'a');
    text.back() = 'z';
    OnEachStream([&text](TStream& target) {
        TMemoryStream source(BytesOf(text));
        source.SetPosition(1);
        for (const int count : {0, 2'000'000}) target.CopyFrom(source, count);
        EXPECT_EQ(target.GetSize(), 2'000'000);
        EXPECT_EQ(target.CopyRestFrom(source), 499'999);
        EXPECT_EQ(target.CopyRestFrom(source), 0);
        target.SetPosition(0);
        EXPECT_TRUE(ReadText(target, text.size()) == text.substr(1));
        source.SetPosition(0);
        EXPECT_THROW(target.CopyFrom(source, INT64_MAX), EReadError);
        EXPECT_THROW(target.CopyFrom(source, -1), EArgumentException);
        EXPECT_THROW(target.CopyFrom(target, 1), EArgumentException);
    });
}

TEST(MemoryStreamTest, RefusesToGrowBeyondItsLimit) {
    TMemoryStream stream;
    for (const std::int64_t position : {INT64_MAX, INT64_MAX - 1, std::int64_t{1} << 40}) {
        stream.SetPosition(position);
        EXPECT_THROW(stream.WriteBuffer(BytesOf("ab")), EWriteError) << position;
        EXPECT_EQ(ReadText(stream, 1), "");
    }
    EXPECT_EQ(stream.GetSize(), 0);
}

TEST(FileStreamTest, ModesKeepOrReplaceAndPositionsReachBeyondFourGiB) {
    const TTemporaryFolder folder;
    const String path = folder.GetPath(u"a.bin");
    for (const auto& [mode, expected] : {std::pair{fmCreate, "XY"},
                                         {fmRewrite, "XY"},
                                         {fmAppend, "123XY"},
                                         {fmOpenWrite, "XY3"},
                                         {fmOpenReadWrite, "XY3"}}) {
        WriteFileInOneGo(path, "123");
        TFileStream(path, mode).WriteBuffer(BytesOf("XY"));
        EXPECT_EQ(ReadWholeFile(path), expected) << mode;
    }
    TFileStream file(path, fmOpenReadWrite);  // becomes a sparse file
    constexpr std::int64_t kFar = (std::int64_t{5} << 30) + 7;
    file.SetPosition(kFar);
    file.WriteBuffer(BytesOf("far"));
    EXPECT_EQ(file.Seek(-3, soEnd), kFar);
    EXPECT_EQ(ReadText(file, 9), "far");
}

TEST(FileStreamTest, FailuresNameThePathAndTheReason) {
    const TTemporaryDrive drive(u'D');
    WriteFileInOneGo(u"D:\\file", "abc");
    ForceDirectories(u"D:\\folder");
    // clang-format off
    const std::tuple<TFileMode, String, StringView> cases[] = {
        {fmOpenRead, u"D:\\no\\y.csv", u"No such file or directory"},
        {fmOpenRead, u"D:\\folder", u"Is a directory"}, {fmOpenRead, u"Q:\\x", u"Drive Q: is not known"},
        {fmOpenRead, u"", u"No such file or directory"},
        {fmOpenWrite, u"D:/no", u"No such file or directory"}, {fmAppend, u"D:\\folder", u"Is a directory"},
        {fmCreate, u"D:\\no\\y.csv", u"No such file or directory"},
        {fmCreate, u"D:\\file\\y", u"Not a directory"}, {fmRewrite, u"D:\\folder", u"Is a directory"},
        {fmRewrite, u"Q:\\x", u"Drive Q: is not known"}};
    // clang-format on
    for (const auto& [mode, path, reason] : cases) {
        const bool creates = mode == fmCreate || mode == fmRewrite;
        EXPECT_EQ(
            (creates ? Raised<EFCreateError>
                     : Raised<EFOpenError>)([&, path = path, mode = mode] { TFileStream(path, mode); }),
            (creates ? u"Cannot create file \"" : u"Cannot open file \"") + path + u"\": " + String(reason));
    }
    TFileStream file(u"D:\\file", fmOpenRead), full(u"/dev/full", fmCreate);
    std::string four(4, ' ');
    EXPECT_EQ(Raised<EReadError>([&] { file.ReadBuffer(WritableBytesOf(four)); }),
              u"Cannot read file \"D:\\file\": Unexpected end of file");
    EXPECT_EQ(Raised<EWriteError>([&] { file.WriteBuffer(BytesOf("x")); }),
              u"Cannot write file \"D:\\file\": Bad file descriptor");
    EXPECT_EQ(Raised<EWriteError>([&] { full.WriteBuffer(BytesOf("x")); }),
              u"Cannot write file \"/dev/full\": No space left on device");
    for (int i = 0; i < 2; ++i) file.Close();
    EXPECT_EQ(Raised<EStreamError>([&] { ReadText(file, 1); }),
              u"Cannot use file \"D:\\file\": It is closed");
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

TEST(StandardStreamTest, ReadsAndWritesTheDescriptorsOfTheProcess) {
    const TTemporaryFolder folder;
    const std::string file = folder.GetNativePath("file");
    {
        const TRedirection output(STDOUT_FILENO, file.c_str());
        for (const char* text : {"ab", "cd"}) {
            const auto stream = TFileStream::StandardOutput();
            stream->WriteBuffer(BytesOf(text));
            stream->Close();
        }
        EXPECT_EQ(write(STDOUT_FILENO, "e", 1), 1);
    }
    const TRedirection input(STDIN_FILENO, file.c_str());
    const auto stream = TFileStream::StandardInput();
    EXPECT_EQ(ReadText(*stream, 9), "abcde");
    std::string one(1, ' ');
    EXPECT_EQ(Raised<EReadError>([&] { stream->ReadBuffer(WritableBytesOf(one)); }),
              u"Cannot read standard input: Unexpected end of file");
}

TEST(StandardStreamTest, FailuresNameTheStream) {
    String full, noInput, noOutput;
    {
        const TRedirection output(STDOUT_FILENO, "/dev/full");
        full = Raised<EWriteError>([] { TFileStream::StandardOutput()->WriteBuffer(BytesOf("x")); });
    }
    {
        const TRedirection output(STDOUT_FILENO, nullptr), input(STDIN_FILENO, nullptr);
        noInput = Raised<EFOpenError>([] { static_cast<void>(TFileStream::StandardInput()); });
        noOutput = Raised<EFCreateError>([] { static_cast<void>(TFileStream::StandardOutput()); });
    }
    EXPECT_EQ(full, u"Cannot write standard output: No space left on device");
    EXPECT_EQ(noInput, u"Cannot open standard input: Bad file descriptor");
    EXPECT_EQ(noOutput, u"Cannot create standard output: Bad file descriptor");
}

}  // namespace
}  // namespace Varnholt::Test
