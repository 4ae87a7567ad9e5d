#include "Platform/Runtime/Streams.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>

#include <csignal>
#include <limits>
#include <memory>

#include "Platform/Runtime/Files.h"
#include "Tests/Support/TemporaryFolder.h"

namespace Varnholt {
namespace {

using testing::StrEq;
using testing::ThrowsMessage;
using Tests::TTemporaryFolder;

constexpr std::int64_t kMax = std::numeric_limits<std::int64_t>::max();

std::string ReadText(TStream& stream, std::size_t size) {
    std::string text(size, '\0');
    text.resize(stream.Read(WritableBytesOf(text)));
    return text;
}

// Every stream keeps to the same contract.
class StreamContractTest : public testing::TestWithParam<bool> {
protected:
    std::unique_ptr<TStream> Make() const {
        if (GetParam()) return std::make_unique<TFileStream>(FFolder.GetPath(u"stream"), fmCreate);
        return std::make_unique<TMemoryStream>();
    }

private:
    const TTemporaryFolder FFolder;
};

TEST_P(StreamContractTest, ReadsWhatWasWrittenUpToTheEnd) {
    const auto stream = Make();
    stream->WriteBuffer(BytesOf("0123456789"));
    EXPECT_EQ(stream->GetPosition(), 10);
    EXPECT_EQ(ReadText(*stream, 5), "");
    EXPECT_EQ(stream->Seek(-3, soEnd), 7);
    EXPECT_EQ(ReadText(*stream, 5), "789");
    stream->SetPosition(2);
    EXPECT_EQ(stream->Seek(2, soCurrent), 4);
    stream->WriteBuffer(BytesOf("ab"));
    stream->SetPosition(0);
    EXPECT_EQ(ReadText(*stream, 20), "0123ab6789");
    stream->SetPosition(8);
    std::string four(4, ' ');
    EXPECT_THROW(stream->ReadBuffer(WritableBytesOf(four)), EReadError);
}

TEST_P(StreamContractTest, GapsAreFilledWithZerosAndCutsMoveThePosition) {
    const auto stream = Make();
    stream->SetPosition(3);
    EXPECT_EQ(stream->GetSize(), 0);
    stream->WriteBuffer(BytesOf("x"));
    stream->SetSize(6);
    EXPECT_EQ(stream->GetPosition(), 4);
    stream->SetPosition(0);
    EXPECT_EQ(ReadText(*stream, 9), std::string("\0\0\0x\0\0", 6));
    stream->SetSize(2);
    EXPECT_EQ(stream->GetPosition(), 2);
    EXPECT_EQ(stream->GetSize(), 2);
}

TEST_P(StreamContractTest, ImpossiblePositionsAndSizesAreRejected) {
    const auto stream = Make();
    stream->WriteBuffer(BytesOf("abc"));
    EXPECT_THROW(stream->SetPosition(-1), EStreamError);
    EXPECT_THROW(stream->Seek(-4, soEnd), EStreamError);
    EXPECT_THROW(stream->Seek(kMax, soCurrent), EStreamError);
    EXPECT_THROW(stream->SetSize(-1), EStreamError);
    EXPECT_THROW(stream->SetSize(kMax), EStreamError);
    EXPECT_EQ(stream->GetPosition(), 3);
    EXPECT_EQ(stream->GetSize(), 3);
}

TEST_P(StreamContractTest, CopiesExactlyOrTheRest) {
    std::string text(2'500'000, 'a');
    text.back() = 'z';
    TMemoryStream source(BytesOf(text));
    const auto target = Make();
    source.SetPosition(1);
    target->CopyFrom(source, 0);
    EXPECT_EQ(target->GetSize(), 0);
    target->CopyFrom(source, 2'000'000);
    EXPECT_EQ(target->CopyRestFrom(source), 499'999);
    target->SetPosition(0);
    EXPECT_TRUE(ReadText(*target, text.size()) == text.substr(1));
    EXPECT_EQ(target->CopyRestFrom(source), 0);
    source.SetPosition(0);
    EXPECT_THROW(target->CopyFrom(source, kMax), EReadError);
    EXPECT_THROW(target->CopyFrom(source, -1), EArgumentException);
    EXPECT_THROW(target->CopyFrom(*target, 1), EArgumentException);
}

INSTANTIATE_TEST_SUITE_P(Streams, StreamContractTest, testing::Bool(),
                         [](const auto& tested) { return tested.param ? "File" : "Memory"; });

TEST(MemoryStreamTest, RefusesToGrowBeyondItsLimit) {
    TMemoryStream stream;
    for (const std::int64_t position : {kMax, kMax - 1, std::int64_t{1} << 40}) {
        stream.SetPosition(position);
        EXPECT_THROW(stream.WriteBuffer(BytesOf("ab")), EWriteError) << position;
        EXPECT_EQ(ReadText(stream, 1), "");
    }
    EXPECT_EQ(stream.GetSize(), 0);
}

TEST(FileStreamTest, ModesKeepOrReplaceTheContent) {
    const TTemporaryFolder folder;
    const String path = folder.GetPath(u"a.bin");
    const std::pair<TFileMode, const char*> cases[] = {{fmCreate, "XY"},
                                                       {fmRewrite, "XY"},
                                                       {fmAppend, "123XY"},
                                                       {fmOpenWrite, "XY3"},
                                                       {fmOpenReadWrite, "XY3"}};
    for (const auto& [mode, expected] : cases) {
        WriteFileInOneGo(path, "123");
        TFileStream(path, mode).WriteBuffer(BytesOf("XY"));
        EXPECT_EQ(ReadWholeFile(path), expected) << mode;
    }
    TFileStream reader(path, fmOpenRead);
    EXPECT_THAT([&] { reader.WriteBuffer(BytesOf("x")); },
                ThrowsMessage<EWriteError>(
                    StrEq(ToUtf8(u"Cannot write file \"" + path + u"\": Bad file descriptor"))));
}

TEST(FileStreamTest, PositionsReachBeyondFourGiB) {
    const TTemporaryFolder folder;
    TFileStream file(folder.GetPath(u"sparse"), fmCreate);
    constexpr std::int64_t kFar = (std::int64_t{5} << 30) + 7;
    file.SetPosition(kFar);
    file.WriteBuffer(BytesOf("far"));
    EXPECT_EQ(file.GetSize(), kFar + 3);
    file.SetPosition(kFar);
    EXPECT_EQ(ReadText(file, 9), "far");
}

TEST(FileStreamTest, FailuresNameThePathAndTheReason) {
    const TTemporaryFolder folder;
    const TDriveTableScope scope;
    SetDrive(u'D', folder.GetNativePath());
    WriteFileInOneGo(u"D:\\file", "abc");
    ForceDirectories(u"D:\\folder");
    struct TCase {
        TFileMode mode;
        StringView path, message;
    };
    const TCase cases[] = {
        {fmOpenRead, u"D:\\no\\y.csv", u"Cannot open file \"D:\\no\\y.csv\": No such file or directory"},
        {fmOpenRead, u"D:\\folder", u"Cannot open file \"D:\\folder\": Is a directory"},
        {fmOpenRead, u"Q:\\x", u"Cannot open file \"Q:\\x\": Drive Q: is not known"},
        {fmOpenRead, u"", u"Cannot open file \"\": No such file or directory"},
        {fmOpenWrite, u"D:/no", u"Cannot open file \"D:/no\": No such file or directory"},
        {fmAppend, u"D:\\folder", u"Cannot open file \"D:\\folder\": Is a directory"},
        {fmCreate, u"D:\\no\\y.csv", u"Cannot create file \"D:\\no\\y.csv\": No such file or directory"},
        {fmCreate, u"D:\\file\\y", u"Cannot create file \"D:\\file\\y\": Not a directory"},
        {fmRewrite, u"D:\\folder", u"Cannot create file \"D:\\folder\": Is a directory"},
        {fmRewrite, u"Q:\\x", u"Cannot create file \"Q:\\x\": Drive Q: is not known"},
    };
    for (const TCase& c : cases) {
        const auto open = [&] { TFileStream(c.path, c.mode); };
        if (c.mode == fmCreate || c.mode == fmRewrite)
            EXPECT_THAT(open, ThrowsMessage<EFCreateError>(StrEq(ToUtf8(c.message))));
        else
            EXPECT_THAT(open, ThrowsMessage<EFOpenError>(StrEq(ToUtf8(c.message))));
    }
    TFileStream file(u"D:\\file", fmOpenRead);
    std::string four(4, ' ');
    EXPECT_THAT([&] { file.ReadBuffer(WritableBytesOf(four)); },
                ThrowsMessage<EReadError>(StrEq("Cannot read file \"D:\\file\": Unexpected end of file")));
    file.Close();
    file.Close();
    EXPECT_THAT([&] { ReadText(file, 1); },
                ThrowsMessage<EStreamError>(StrEq("Cannot use file \"D:\\file\": It is closed")));
}

TEST(FileStreamTest, FullDiskIsReported) {
    TFileStream full(u"/dev/full", fmCreate);
    EXPECT_THAT(
        [&] { full.WriteBuffer(BytesOf("x")); },
        ThrowsMessage<EWriteError>(StrEq("Cannot write file \"/dev/full\": No space left on device")));
}

// The system takes the part that still fits, and refuses only the rest.
TEST(FileStreamTest, ShortWriteEndsInAFailure) {
    const TTemporaryFolder folder;
    const String path = folder.GetPath(u"limited");
    rlimit former{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &former), 0);
    const rlimit limit{1000, former.rlim_max};
    const auto formerHandler = std::signal(SIGXFSZ, SIG_IGN);
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &limit), 0);
    EXPECT_THAT(
        [&] { WriteFileInOneGo(path, std::string(4000, 'x')); },
        ThrowsMessage<EWriteError>(StrEq(ToUtf8(u"Cannot write file \"" + path + u"\": File too large"))));
    setrlimit(RLIMIT_FSIZE, &former);
    std::signal(SIGXFSZ, formerHandler);
    EXPECT_EQ(FileSize(path), 1000);
}

}  // namespace
}  // namespace Varnholt
