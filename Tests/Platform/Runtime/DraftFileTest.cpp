#include "Platform/Runtime/DraftFile.h"

#include <gmock/gmock.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <set>

#include "Platform/Runtime/DraftNamePrivate.h"
#include "Platform/Runtime/Files.h"
#include "Tests/Support/AllocationCount.h"
#include "Tests/Support/Raised.h"
#include "Tests/Support/TemporaryFolder.h"

namespace {

mode_t widestBeforeModeIsSet = 0;

}  // namespace

// Stands before the system's own, to see what mode a draft has until it gets that of the former file.
extern "C" VARNHOLT_EXPORT int fchmod(int handle, mode_t mode) noexcept {
    struct stat facts {};
    if (fstat(handle, &facts) == 0) widestBeforeModeIsSet |= facts.st_mode & 0777;
    return static_cast<int>(syscall(SYS_fchmod, handle, mode));
}

namespace Varnholt::Test {

namespace fs = std::filesystem;
using namespace std::string_literals;

/// Runs each test on a folder with the file "D:\file" of mode 0600, once for each way to replace a file.
class DraftFileTest : public testing::TestWithParam<std::pair<bool, bool>> {
protected:
    DraftFileTest() {
        DraftAbilities().UnnamedFiles = GetParam().first;
        DraftAbilities().Exchange = GetParam().second;
        WriteFileInOneGo(u"D:\\file", "former");
        fs::permissions(FDrive.GetNativePath("file"), fs::perms(0600));
    }
    ~DraftFileTest() override {
        DraftAbilities().UnnamedFiles = true;
        DraftAbilities().Exchange = true;
    }

    [[nodiscard]] std::set<std::string> Names() const {
        std::set<std::string> names;
        for (const auto& entry : fs::directory_iterator(FDrive.GetNativePath()))
            names.insert(entry.path().filename());
        return names;
    }

    const TTemporaryDrive FDrive{u'D'};
};

INSTANTIATE_TEST_SUITE_P(Ways, DraftFileTest,
                         testing::Values(std::pair(true, true), std::pair(false, true),
                                         std::pair(false, false)));

std::size_t OpenDescriptors() {
    const fs::directory_iterator all("/proc/self/fd");
    return static_cast<std::size_t>(std::distance(begin(all), end(all)));
}

/// The mode, group and attributes of a file.
std::string Attributes(const std::string& native, const std::vector<std::string>& names) {
    struct stat facts {};
    EXPECT_EQ(stat(native.c_str(), &facts), 0);
    std::string text = std::to_string(facts.st_mode) + " " + std::to_string(facts.st_gid);
    for (const std::string& name : names) {
        std::string value(100, '\0');
        const ssize_t size = getxattr(native.c_str(), name.c_str(), value.data(), value.size());
        text += " " + (size < 0 ? "none" : value.substr(0, static_cast<std::size_t>(size)));
    }
    return text;
}

// An access control list: owner rw, user 7 r, group none, mask r, others none.
const std::string kList =
    "\2\0\0\0\1\0\6\0\xFF\xFF\xFF\xFF\2\0\4\0\7\0\0\0\4\0\0\0\xFF\xFF\xFF\xFF\20\0\4\0\xFF\xFF\xFF\xFF"
    "\40\0\0\0\xFF\xFF\xFF\xFF"s;

TEST_P(DraftFileTest, KeepsModeGroupAttributesAndList) {
    const std::string file = FDrive.GetNativePath("file"), fresh = FDrive.GetNativePath("fresh");
    const std::vector<std::string> names = {"user.note", "system.posix_acl_access"};
    const auto replace = [&] {
        const std::string before = Attributes(file, names);
        WriteFileInOneGo(u"D:\\file", "new");
        EXPECT_EQ(ReadWholeFile(u"D:\\file"), "new");
        EXPECT_EQ(Attributes(file, names), before);
    };
    const mode_t formerMask = umask(0);
    widestBeforeModeIsSet = 0;
    replace();
    if (geteuid() == 0) {
        EXPECT_EQ(chown(file.c_str(), 0, 7), 0);
    }
    static_cast<void>(setxattr(file.c_str(), names[0].c_str(), "value of some length", 20, 0));
    replace();
    EXPECT_EQ(widestBeforeModeIsSet, 0600U);
    chmod(file.c_str(), 0664);
    replace();
    static_cast<void>(setxattr(file.c_str(), names[1].c_str(), kList.data(), kList.size(), 0));
    replace();
    // A list that the folder gives to new files is only for new files.
    removexattr(file.c_str(), names[1].c_str());
    setxattr(FDrive.GetNativePath().c_str(), "system.posix_acl_default", kList.data(), kList.size(), 0);
    replace();
    for (const auto* way : {"draft", "plain"}) {
        if (way == "draft"s) WriteFileInOneGo(u"D:\\fresh", "");
        if (way == "plain"s) TFileStream(u"D:\\plain", fmCreate);
    }
    EXPECT_EQ(Attributes(fresh, names), Attributes(FDrive.GetNativePath("plain"), names));
    removexattr(FDrive.GetNativePath().c_str(), "system.posix_acl_default");
    umask(027);
    WriteFileInOneGo(u"D:\\masked", "");
    EXPECT_EQ(fs::status(FDrive.GetNativePath("masked")).permissions(), fs::perms(0640));
    umask(formerMask);
}

TEST_P(DraftFileTest, ReplacesTheFileAtTheEndOfLinks) {
    ForceDirectories(u"D:\\folder");
    const std::string longest(255, 'n');
    const std::pair<const char*, const char*> links[] = {
        {"file", "link"}, {"link", "second"}, {"../file", "folder/up"}, {"absent", "dangling"}};
    for (const auto& [target, link] : links) fs::create_symlink(target, FDrive.GetNativePath(link));
    fs::create_symlink(FDrive.GetNativePath("file"), FDrive.GetNativePath("absolute"));
    const std::pair<String, StringView> cases[] = {
        {u"D:\\file", u"D:\\file"},       {u"D:\\link", u"D:\\file"},     {u"D:\\second", u"D:\\file"},
        {u"D:\\folder\\up", u"D:\\file"}, {u"D:\\absolute", u"D:\\file"}, {u"D:\\dangling", u"D:\\absent"}};
    for (const auto& [path, target] : cases) {
        EXPECT_FALSE(TDraftFileStream::IsWrittenDirectly(path)) << ToUtf8(path);
        const std::string bytes = ToUtf8(path) + std::string(300'000, '\0');
        WriteFileInOneGo(path, bytes);
        EXPECT_TRUE(ReadWholeFile(target) == bytes) << ToUtf8(path);
    }
    for (const auto& [target, link] : links) EXPECT_EQ(fs::read_symlink(FDrive.GetNativePath(link)), target);
    WriteFileInOneGo(u"D:\\" + FromUtf8(longest), "");
    EXPECT_THAT(Names(), testing::ElementsAre("absent", "absolute", "dangling", "file", "folder", "link",
                                              longest, "second"));
}

TEST_P(DraftFileTest, WritesDirectlyWhatARenameWouldNotReplace) {
    const std::string file = FDrive.GetNativePath("file"), folder = FDrive.GetNativePath("folder");
    fs::create_hard_link(file, FDrive.GetNativePath("twin"));
    ASSERT_EQ(mkfifo(FDrive.GetNativePath("pipe").c_str(), 0600), 0);
    ForceDirectories(u"D:\\folder");
    WriteFileInOneGo(u"D:\\folder\\ours", "former");
    std::vector<String> direct = {u"D:\\file", u"D:\\pipe", u"/dev/null", u"/dev/stdout",
                                  u"D:\\folder\\ours"};
    constexpr uid_t kNobody = 65534;
    const bool isRoot = geteuid() == 0;
    if (isRoot) {  // the last two with a folder and a group that are not the user's
        for (const char* name : {"", "/ours"}) ASSERT_EQ(chown((folder + name).c_str(), kNobody, kNobody), 0);
        WriteFileInOneGo(u"D:\\group", "former");
        ASSERT_EQ(chown(FDrive.GetNativePath("group").c_str(), kNobody, 9), 0);
        direct.push_back(u"D:\\group");
        fs::permissions(FDrive.GetNativePath(), fs::perms(0777));
        fs::permissions(file, fs::perms(0666));
    }
    fs::permissions(folder, fs::perms(0555));
    ASSERT_EQ(seteuid(isRoot ? kNobody : geteuid()), 0);
    for (const String& path : direct) EXPECT_TRUE(TDraftFileStream::IsWrittenDirectly(path)) << ToUtf8(path);
    for (StringView path : {u"D:\\folder\\ours", u"D:\\file"}) WriteFileInOneGo(path, "new");
    EXPECT_THROW(WriteFileInOneGo(u"D:\\folder\\fresh", ""), EFCreateError);
    ASSERT_EQ(seteuid(getuid()), 0);
    fs::permissions(folder, fs::perms(0755));
    for (StringView path : {u"D:\\twin", u"D:\\folder\\ours"}) EXPECT_EQ(ReadWholeFile(path), "new");
    EXPECT_THROW(WriteFileInOneGo(u"/dev/full", "x"), EWriteError);
}

TEST_P(DraftFileTest, RefusesPathsBeforeAnythingIsWritten) {
    ForceDirectories(u"D:\\folder");
    fs::create_symlink("loop", FDrive.GetNativePath("loop"));
    const String tooLong(256, u'n');
    // clang-format off
    const std::pair<StringView, StringView> cases[] = {
        {u"folder", u"Is a directory"}, {u"folder\\", u"Is a directory"}, {u"no\\x", u"No such file or directory"},
        {u"file\\x", u"Not a directory"}, {u"loop", u"Too many levels of symbolic links"},
        {tooLong, u"File name too long"}};
    // clang-format on
    for (const auto& [name, reason] : cases) {
        const String path = u"D:\\" + String(name);
        EXPECT_EQ(Raised<EFCreateError>([&] { TDraftFileStream{path}; }),
                  u"Cannot create file \"" + path + u"\": " + String(reason));
    }
    EXPECT_EQ(Raised<EFCreateError>([] { TDraftFileStream(u"Q:\\x"); }),
              u"Cannot create file \"Q:\\x\": Drive Q: is not known");
    EXPECT_EQ(Names().size(), 3U);
}

TEST_P(DraftFileTest, LeavesTheFormerFileWithoutACommit) {
    {
        TDraftFileStream file(u"D:\\file");
        file.WriteBuffer(BytesOf("lost"));
        EXPECT_EQ(ReadWholeFile(u"D:\\file"), "former");
        EXPECT_EQ(Names().size(), GetParam().first ? 1U : 2U);
    }
    EXPECT_EQ(Names().size(), 1U);
    if (GetParam().first) return;
    TDraftFileStream file(u"D:\\file");
    RemoveDraftFiles();
    EXPECT_EQ(Raised<EInOutError>([&] { file.Commit(); }),
              u"Cannot replace file \"D:\\file\": No such file or directory");
    EXPECT_THROW(file.Commit(), EStreamError);
    EXPECT_EQ(ReadWholeFile(u"D:\\file"), "former");
}

// A named draft needs the handler that a program installs.
TEST_P(DraftFileTest, LeavesNothingWhenTheProcessIsKilled) {
    const bool isNamed = !GetParam().first;
    for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGPIPE, SIGXFSZ, SIGKILL}) {
        if (isNamed && signal == SIGKILL) continue;
        const pid_t child = fork();
        if (child == 0) {
            const rlimit limit{1000, 1000};
            if (isNamed)
                std::signal(signal, [](int) {
                    RemoveDraftFiles();
                    _exit(1);
                });
            TDraftFileStream file(u"D:\\file"), other(u"D:\\other");
            if (signal == SIGXFSZ) setrlimit(RLIMIT_FSIZE, &limit);
            file.WriteBuffer(BytesOf(std::string(2000, 'x')));
            raise(signal);
            _exit(2);
        }
        int status = 0;
        ASSERT_EQ(waitpid(child, &status, 0), child);
        EXPECT_TRUE(isNamed ? WEXITSTATUS(status) == 1 : WTERMSIG(status) == signal)
            << signal << " " << status;
        EXPECT_THAT(Names(), testing::ElementsAre("file")) << signal;
    }
    EXPECT_EQ(ReadWholeFile(u"D:\\file"), "former");
}

// The system takes the part that still fits, and refuses only the rest.
TEST_P(DraftFileTest, ShortWriteLeavesTheFormerFile) {
    rlimit former{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &former), 0);
    const rlimit limit{1000, former.rlim_max};
    const auto formerHandler = std::signal(SIGXFSZ, SIG_IGN);
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &limit), 0);
    EXPECT_EQ(Raised<EWriteError>([] { WriteFileInOneGo(u"D:\\file", std::string(4000, 'x')); }),
              u"Cannot write file \"D:\\file\": File too large");
    setrlimit(RLIMIT_FSIZE, &former);
    std::signal(SIGXFSZ, formerHandler);
    EXPECT_EQ(ReadWholeFile(u"D:\\file"), "former");
    EXPECT_THAT(Names(), testing::ElementsAre("file"));
}

TEST_P(DraftFileTest, FailedAllocationsLeaveNothing) {
    const std::size_t descriptors = OpenDescriptors();
    ASSERT_EQ(setxattr(FDrive.GetNativePath("file").c_str(), "user.note", "value of some length", 20, 0), 0);
    const auto commitBoth = [] {
        TDraftFileStream first(u"D:\\file"), second(u"D:\\second");
        first.WriteBuffer(BytesOf("new"));
        TDraftFileStream* const files[] = {&first, &second};
        TDraftFileStream::CommitTogether(files);
    };
    const auto check = [&] {
        EXPECT_EQ(OpenDescriptors(), descriptors);
        const bool isNew = FileExists(u"D:\\second");
        EXPECT_EQ(ReadWholeFile(u"D:\\file"), isNew ? "new" : "former");
        EXPECT_EQ(Names().size(), isNew ? 2U : 1U);
    };
    EXPECT_GT(FailEachAllocation(commitBoth, check), 5);
}

TEST_P(DraftFileTest, CommitsAllFilesOrNone) {
    const StringView paths[] = {u"D:\\file", u"D:\\fresh", u"D:\\last"};
    WriteFileInOneGo(u"D:\\last", "former last");
    for (const int broken : {-1, 0, 1, 2}) {  // the file whose place a folder takes
        SCOPED_TRACE(broken);
        TDraftFileStream first(paths[0]), second(paths[1]), third(paths[2]);
        TDraftFileStream* const files[] = {&first, &second, &third};
        for (TDraftFileStream* file : files) file->WriteBuffer(BytesOf("new"));
        const std::set<std::string> all = {"file", "fresh", "last"};
        if (broken < 0) {
            TDraftFileStream::CommitTogether(files);
            for (const StringView path : paths) EXPECT_EQ(ReadWholeFile(path), "new");
            EXPECT_EQ(Names(), all);
            for (const StringView path : paths) WriteFileInOneGo(path, "former");
            DeleteFile(paths[1]);
            continue;
        }
        const StringView path = paths[broken];
        if (FileExists(path)) DeleteFile(path);
        ForceDirectories(path);
        EXPECT_EQ(Raised<EInOutError>([&] { TDraftFileStream::CommitTogether(files); }),
                  u"Cannot replace file \"" + String(path) + u"\": Is a directory");
        EXPECT_THROW(first.WriteBuffer(BytesOf("x")), EStreamError);
        for (const int i : {0, 2}) EXPECT_TRUE(i == broken || ReadWholeFile(paths[i]) == "former") << i;
        EXPECT_EQ(Names().size(), broken == 1 ? 3U : 2U);
        RemoveDirectory(path);
        if (broken != 1) WriteFileInOneGo(path, "former");
    }
}

}  // namespace Varnholt::Test
