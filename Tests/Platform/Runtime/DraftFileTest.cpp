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
#include <functional>
#include <set>

#include "Platform/Runtime/DraftNamePrivate.h"
#include "Platform/Runtime/Files.h"
#include "Tests/Support/AllocationCount.h"
#include "Tests/Support/Raised.h"
#include "Tests/Support/TemporaryFolder.h"

namespace {

int modesSet = 0;
mode_t excess = 0;  // rights that a draft had and its former file does not have

}  // namespace

// Replaces the system's function, to see the mode of a draft before it gets that of the former file.
extern "C" VARNHOLT_EXPORT int fchmod(int handle, mode_t mode) noexcept {
    struct stat facts {};
    if (fstat(handle, &facts) == 0) excess |= facts.st_mode & 0777 & ~mode;
    ++modesSet;
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
    const std::string file = FDrive.GetNativePath("file"), folder = FDrive.GetNativePath();
    const char *note = "user.note", *list = "system.posix_acl_access",
               *folderList = "system.posix_acl_default";
    const auto set = [](const std::string& path, const char* name, const std::string& value) {
        setxattr(path.c_str(), name, value.data(), value.size(), 0);
    };
    const std::function<void()> changes[] = {
        [] {},
        [&] { static_cast<void>(chown(file.c_str(), geteuid(), geteuid() == 0 ? 7 : getegid())); },
        [&] { set(file, note, "a value of some length"); },
        [&] { set(file, list, kList); },
        // A list that the folder gives to new files is only for new files.
        [&] { removexattr(file.c_str(), list), set(folder, folderList, kList); },
        [&] { fs::permissions(file, fs::perms(0664)); },
    };
    const mode_t formerMask = umask(027);
    modesSet = 0;
    for (const auto& change : changes) {
        change();
        const std::string before = Attributes(file, {note, list});
        WriteFileInOneGo(u"D:\\file", "new");
        EXPECT_EQ(ReadWholeFile(u"D:\\file"), "new");
        EXPECT_EQ(Attributes(file, {note, list}), before) << &change - changes;
    }
    EXPECT_TRUE(modesSet == std::ssize(changes) && excess == 0) << excess;
    EXPECT_FALSE(TDraftFileStream::IsWrittenDirectly(u"D:\\file"));
    for (const bool hasList : {true, false}) {  // a new file is like any other new file
        WriteFileInOneGo(u"D:\\draft", "");
        TFileStream(u"D:\\plain", fmCreate);
        EXPECT_EQ(Attributes(FDrive.GetNativePath("draft"), {list}),
                  Attributes(FDrive.GetNativePath("plain"), {list}));
        for (StringView name : {u"D:\\draft", u"D:\\plain"}) DeleteFile(name);
        if (hasList) removexattr(folder.c_str(), folderList);
    }
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
    EXPECT_TRUE(TDraftFileStream::IsWrittenDirectly(u"D:\\file"));
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
        {u"folder", u"Is a directory"}, {u"folder\\", u"Is a directory"},
        {u"no\\x", u"No such file or directory"},
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
    TDraftFileStream file(u"D:\\file");
    file.WriteBuffer(BytesOf("lost"));
    EXPECT_EQ(Names().size(), GetParam().first ? 1U : 2U);
    EXPECT_EQ(ReadWholeFile(u"D:\\file"), "former");
    if (GetParam().first) return;
    RemoveDraftFiles();
    EXPECT_EQ(Raised<EInOutError>([&] { file.Commit(); }),
              u"Cannot replace file \"D:\\file\": No such file or directory");
    EXPECT_EQ(ReadWholeFile(u"D:\\file"), "former");
}

/// What a process does to end in the middle of writing two files. With SIGXFSZ ignored (for signal 0) the
/// system takes the part that still fits, refuses the rest, and the process ends by itself.
[[noreturn]] void EndWhileWriting(int signal, bool hasHandler) {
    std::signal(signal, SIG_DFL);  // whatever the process that started the test ignores
    if (hasHandler)
        std::signal(signal, [](int) {
            RemoveDraftFiles();
            _exit(1);
        });
    if (signal == 0) std::signal(SIGXFSZ, SIG_IGN);
    String message;
    {
        TDraftFileStream file(u"D:\\file"), other(u"D:\\other");
        const rlimit limit{1000, 1000};
        if (signal == SIGXFSZ || signal == 0) setrlimit(RLIMIT_FSIZE, &limit);
        message = Raised<EWriteError>([&] { file.WriteBuffer(BytesOf(std::string(2000, 'x'))); });
        if (signal != 0) raise(signal);
    }
    _exit(message == u"Cannot write file \"D:\\file\": File too large" ? 1 : 2);
}

TEST_P(DraftFileTest, LeavesNothingWhenTheProcessEnds) {
    const bool isNamed = !GetParam().first;  // needs the handler that a program installs
    for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGPIPE, SIGXFSZ, 0, SIGKILL}) {
        if (isNamed && signal == SIGKILL) continue;
        const pid_t child = fork();
        if (child == 0) EndWhileWriting(signal, isNamed && signal != 0);
        int status = 0;
        ASSERT_EQ(waitpid(child, &status, 0), child);
        EXPECT_EQ(status, isNamed || signal == 0 ? W_EXITCODE(1, 0) : W_EXITCODE(0, signal));
        EXPECT_THAT(Names(), testing::ElementsAre("file")) << signal;
    }
    EXPECT_EQ(ReadWholeFile(u"D:\\file"), "former");
}

TEST_P(DraftFileTest, FailedAllocationsLeaveNothing) {
    const std::ptrdiff_t descriptors = OpenDescriptors();
    setxattr(FDrive.GetNativePath("file").c_str(), "user.note", "a value of some length", 22, 0);
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
    WriteFileInOneGo(paths[2], "former");
    for (const StringView broken : {paths[0], paths[1], paths[2], StringView()}) {
        SCOPED_TRACE(ToUtf8(broken));
        TDraftFileStream first(paths[0]), second(paths[1]), third(paths[2]);
        TDraftFileStream* const files[] = {&first, &second, &third};
        for (TDraftFileStream* file : files) file->WriteBuffer(BytesOf("new"));
        if (broken.empty()) {
            TDraftFileStream::CommitTogether(files);
            for (const StringView path : paths) EXPECT_EQ(ReadWholeFile(path), "new");
            EXPECT_THAT(Names(), testing::ElementsAre("file", "fresh", "last"));
            continue;
        }
        if (FileExists(broken)) DeleteFile(broken);
        ForceDirectories(broken);
        EXPECT_EQ(Raised<EInOutError>([&] { TDraftFileStream::CommitTogether(files); }),
                  u"Cannot replace file \"" + String(broken) + u"\": Is a directory");
        EXPECT_THROW(first.WriteBuffer(BytesOf("x")), EStreamError);
        EXPECT_EQ(Names().size(), broken == paths[1] ? 3U : 2U);
        RemoveDirectory(broken);
        if (broken != paths[1]) WriteFileInOneGo(broken, "former");
        for (const int i : {0, 2}) EXPECT_EQ(ReadWholeFile(paths[i]), "former") << i;
    }
    TDraftFileStream first(u"D:\\twice"), second(u"D:\\.\\twice");
    TDraftFileStream* const files[] = {&first, &second};
    EXPECT_EQ(Raised<EInOutError>([&] { TDraftFileStream::CommitTogether(files); }),
              u"Cannot replace file \"D:\\.\\twice\": Another of the files has the same target");
}

}  // namespace Varnholt::Test
