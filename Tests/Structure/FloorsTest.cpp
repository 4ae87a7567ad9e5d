#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <regex>
#include <string>
#include <vector>

/// The floors of the source tree. A file may include files of its own folder, of the folders on the floors below,
/// and of the neighbours that its folder lists. Subfolders share the floor of their folder. A private header is
/// for its own folder. Tests may include any file.
namespace {

namespace fs = std::filesystem;

struct TFolder {
    std::string Path;  // with its subfolders, except for VarnholtLib/, the frame
    int Floor;
    std::vector<std::string> Neighbours;  // folders of the same floor that it may use
};

struct TThirdParty {
    std::string Header;  // the beginning of its path
    std::vector<std::string> Users;
};

// clang-format off
const std::vector<TFolder> kFolders = {
    {"Tools/", 10, {}}, {"Desktop/", 10, {}}, {"Benchmarks/", 10, {}}, {"Examples/", 10, {}},
    {"Fuzz/", 10, {"Tests/"}}, {"Tests/", 10, {}},
    {"VarnholtLib/", 9, {}},
    {"VarnholtLib/UI/", 8, {}},
    {"VarnholtLib/Files/", 7, {}},
    {"VarnholtLib/Services/", 6, {}}, {"VarnholtLib/Numerics/", 6, {}},
    {"VarnholtLib/Data/", 5, {}},
    {"VarnholtLib/Foundation/", 4, {}},
    {"VarnholtBaseLib/", 3, {}},
    {"Platform/Controls/", 2, {"Platform/Drawing/"}}, {"Platform/Drawing/", 2, {}}, {"Platform/Http/", 2, {}},
    {"Platform/Registry/", 2, {}}, {"Platform/Xml/", 2, {}}, {"Platform/Zip/", 2, {}},
    {"Platform/System/", 1, {}},
    {"Platform/Runtime/", 0, {}}};

// Headers from outside the tree, and who may include them. A plain name in brackets is the standard library's.
const std::vector<TThirdParty> kThirdParties = {
    {"unicode/", {"Platform/Runtime/"}}, {"libxml/", {"Platform/Xml/", "Benchmarks/"}}, {"curl/", {"Platform/Http/"}},
    {"zip.h", {"Platform/Zip/"}}, {"sqlite3.h", {"Platform/Registry/"}},
    {"cairo", {"Platform/Drawing/"}}, {"pango/", {"Platform/Drawing/"}}, {"zlib.h", {"VarnholtLib/Files/"}},
    {"boost/", {"VarnholtLib/Data/", "VarnholtLib/Numerics/", "Benchmarks/"}},
    {"CLI/", {"Tools/"}}, {"mpi.h", {"Tools/"}}, {"Q", {"Desktop/", "Benchmarks/"}},
    {"benchmark/", {"Benchmarks/"}}, {"spdlog/", {"Benchmarks/"}}, {"gsl/", {"Benchmarks/"}}, {"muParser", {"Benchmarks/"}},
    {"sys/", {"Platform/", "Tools/", "Benchmarks/"}}, {"linux/", {"Platform/"}},
    {"elf.h", {"Platform/System/"}}, {"link.h", {"Platform/System/"}}, {"dlfcn.h", {"Platform/System/"}},
    {"fcntl.h", {"Platform/", "Tools/", "Benchmarks/"}}, {"langinfo.h", {"Platform/Runtime/"}}, {"locale.h", {"Platform/Runtime/"}}, {"malloc.h", {"Benchmarks/"}},
    {"pthread.h", {"Platform/System/"}}, {"pwd.h", {"Platform/System/"}}, {"signal.h", {"Platform/", "Tools/"}},
    {"spawn.h", {"Platform/System/"}}, {"unistd.h", {"Platform/", "Tools/", "Benchmarks/", "Fuzz/"}}};
// clang-format on

bool StartsWithOneOf(const std::string& path, const std::vector<std::string>& prefixes) {
    return std::ranges::any_of(prefixes, [&](const auto& prefix) { return path.starts_with(prefix); });
}

/// The innermost folder of a path, or none. What is deeper in VarnholtLib/ is not the frame's.
const TFolder* FolderOf(const std::string& path) {
    const TFolder* innermost = nullptr;
    for (const TFolder& folder : kFolders) {
        if (!path.starts_with(folder.Path)) continue;
        if (!innermost || folder.Path.size() > innermost->Path.size()) innermost = &folder;
    }
    const bool isFrame = innermost && innermost->Path == "VarnholtLib/";
    return isFrame && path.find('/', innermost->Path.size()) != std::string::npos ? nullptr : innermost;
}

bool IsPrivate(const std::string& path) {
    return path.ends_with("Private.h");
}

bool IsPublic(const std::string& path) {
    return StartsWithOneOf(path, {"Platform/", "VarnholtBaseLib/", "VarnholtLib/"}) && path.ends_with(".h") &&
           !IsPrivate(path);
}

std::string DirectoryOf(const std::string& path) {
    return path.substr(0, path.rfind('/') + 1);
}

std::string ProblemOfThirdParty(const std::string& from, const std::string& header) {
    if (header.find_first_of("/.") == std::string::npos) return "";
    if (IsPublic(from)) return "shows a third party in a public header";
    const auto found = std::ranges::find_if(
        kThirdParties, [&](const TThirdParty& party) { return header.starts_with(party.Header); });
    if (found == kThirdParties.end()) return "is unknown: list who may include it, in FloorsTest.cpp";
    return StartsWithOneOf(from, found->Users) ? "" : "is a third party that this folder may not use";
}

std::string ProblemOfPrivate(const std::string& from, const std::string& to, bool isSameFolder) {
    if (IsPublic(from)) return "shows a private header in a public one";
    const bool isLoadWork = FolderOf(from)->Path == "VarnholtLib/" && to.ends_with("LoadPrivate.h");
    const std::string source = DirectoryOf(from), target = DirectoryOf(to);
    const bool isOwn = isSameFolder && (source.starts_with(target) || target.starts_with(source));
    return isOwn || isLoadWork ? "" : "takes a private header of another folder";
}

/// What is wrong with one file's include, which begins with its bracket or quote; empty if it is allowed.
std::string ProblemOf(const std::string& from, const std::string& include) {
    const std::string to = include.substr(1);
    const TFolder* source = FolderOf(from);
    if (!source) return "has no floor: give its folder one in FloorsTest.cpp";
    if (include[0] == '<') return ProblemOfThirdParty(from, to);
    const TFolder* target = FolderOf(to);
    if (!target && StartsWithOneOf(to, {"Platform/", "VarnholtLib/"}))
        return "includes a folder without a floor";
    if (!target) return "is not written from the root of the tree";
    if (target->Floor > source->Floor) return "runs against the floors";
    if (target->Floor == source->Floor && target != source &&
        !StartsWithOneOf(target->Path, source->Neighbours))
        return "joins two folders of one floor";
    if (IsPrivate(to)) return ProblemOfPrivate(from, to, target == source);
    return source->Path == "Examples/" && !IsPublic(to) ? "is not installed" : "";
}

/// The includes of every file, each with the bracket or quote before it. Any folder of the root is read, except
/// the tests, builds and hidden ones.
std::map<std::string, std::vector<std::string>> ReadTree() {
    static const std::regex directive("^\\s*#\\s*include\\s*([<\"][^\">]+)[\">].*");
    const fs::path root = VARNHOLT_SOURCE_DIR;
    std::map<std::string, std::vector<std::string>> tree;
    for (fs::recursive_directory_iterator entry(root), end; entry != end; ++entry) {
        const std::string path = entry->path().lexically_relative(root).generic_string();
        if (path == "Tests" || path.starts_with("build") || path.starts_with(".")) {
            entry.disable_recursion_pending();
            continue;
        }
        if (!path.ends_with(".h") && !path.ends_with(".cpp")) continue;
        std::vector<std::string>& includes = tree[path];
        std::ifstream text(entry->path());
        std::smatch match;
        for (std::string line; std::getline(text, line);)
            if (std::regex_match(line, match, directive)) includes.push_back(match[1]);
    }
    return tree;
}

TEST(Floors, TheTreeKeepsThem) {
    const auto tree = ReadTree();
    EXPECT_GT(tree.size(), 100U) << "the tree was not found";
    for (const auto& [file, includes] : tree) {
        EXPECT_EQ(ProblemOf(file, "<vector"), "") << file;
        for (const std::string& include : includes)
            EXPECT_EQ(ProblemOf(file, include), "") << file << " includes " << include;
    }
}

TEST(Floors, WhatIsForbiddenIsFound) {
    const std::string upwards = "runs against the floors", beside = "joins two folders of one floor";
    const std::string privately = "takes a private header of another folder";
    const std::string shown = "shows a private header in a public one";
    const std::string foreign = "is a third party that this folder may not use";
    // clang-format off
    const std::tuple<std::string, std::string, std::string> cases[] = {
        {"VarnholtLib/Numerics/a.h", "\"VarnholtLib/Data/b.h", ""},
        {"VarnholtLib/Data/a.h", "\"VarnholtLib/Numerics/b.h", upwards},
        {"VarnholtLib/Numerics/a.h", "\"VarnholtLib/Services/b.h", beside},
        {"VarnholtLib/Numerics/a.cpp", "\"VarnholtLib/Numerics/Calc/b.h", ""},
        {"VarnholtLib/Data/a.cpp", "\"VarnholtLib/Numerics/Calc/b.h", upwards},
        {"VarnholtBaseLib/a.cpp", "\"Platform/Xml/b.h", ""},
        {"Platform/Runtime/a.cpp", "\"Platform/Controls/b.h", upwards},
        {"Platform/Runtime/a.cpp", "\"Platform/System/b.h", upwards},
        {"Platform/Http/a.cpp", "\"Platform/System/b.h", ""},
        {"Platform/Http/a.cpp", "\"Platform/Zip/b.h", beside},
        {"Platform/Controls/a.h", "\"Platform/Drawing/b.h", ""},
        {"Platform/Drawing/a.h", "\"Platform/Controls/b.h", beside},
        {"Platform/Sound/a.cpp", "<vector", "has no floor: give its folder one in FloorsTest.cpp"},
        {"VarnholtLib/Sound/a.cpp", "<vector", "has no floor: give its folder one in FloorsTest.cpp"},
        {"VarnholtLib/a.h", "\"VarnholtLib/Sound/b.h", "includes a folder without a floor"},
        {"Platform/Runtime/a.cpp", "\"b.h", "is not written from the root of the tree"},

        {"VarnholtLib/Data/a.cpp", "\"VarnholtLib/Data/bPrivate.h", ""},
        {"VarnholtLib/Data/aPrivate.h", "\"VarnholtLib/Data/bPrivate.h", ""},
        {"VarnholtLib/Data/a.h", "\"VarnholtLib/Data/bPrivate.h", shown},
        {"VarnholtLib/Numerics/a.cpp", "\"VarnholtLib/Data/bPrivate.h", privately},
        {"Tools/varnholt/a.cpp", "\"VarnholtLib/Data/bPrivate.h", privately},
        {"VarnholtLib/Numerics/a.cpp", "\"VarnholtLib/Numerics/Calc/bPrivate.h", ""},
        {"VarnholtLib/Numerics/Calc/a.cpp", "\"VarnholtLib/Numerics/bPrivate.h", ""},
        {"VarnholtLib/Numerics/Calc/a.cpp", "\"VarnholtLib/Numerics/Fit/bPrivate.h", privately},
        {"VarnholtLib/a.cpp", "\"VarnholtLib/Numerics/bLoadPrivate.h", ""},
        {"VarnholtLib/a.cpp", "\"VarnholtLib/Numerics/bPrivate.h", privately},
        {"VarnholtLib/a.h", "\"VarnholtLib/Numerics/bLoadPrivate.h", shown},
        {"Tools/varnholt/a.cpp", "\"VarnholtLib/Numerics/bLoadPrivate.h", privately},

        {"Fuzz/a.cpp", "\"VarnholtLib/Data/b.h", ""},
        {"Fuzz/a.cpp", "\"Tests/Numerics/b.h", ""},
        {"Benchmarks/a.cpp", "\"Tests/Numerics/b.h", beside},
        {"Fuzz/a.cpp", "\"VarnholtLib/Data/bPrivate.h", privately},
        {"Tools/varnholt/a.cpp", "\"Tools/varnholt/b.h", ""},
        {"Examples/x/a.cpp", "\"VarnholtBaseLib/b.h", ""},
        {"Examples/x/a.cpp", "\"Examples/b.h", "is not installed"},

        {"Platform/Runtime/a.h", "<vector", ""},
        {"Platform/Runtime/a.h", "<unicode/b.h", "shows a third party in a public header"},
        {"Platform/Runtime/aPrivate.h", "<unicode/b.h", ""},
        {"VarnholtLib/Data/a.cpp", "<unicode/b.h", foreign},
        {"VarnholtLib/Data/a.cpp", "<unistd.h", foreign},
        {"Platform/Runtime/a.cpp", "<CLI/CLI.hpp", foreign},
        {"Tools/varnholt/a.cpp", "<CLI/CLI.hpp", ""},
        {"Tools/varnholt/a.cpp", "<new/a.h", "is unknown: list who may include it, in FloorsTest.cpp"}};
    // clang-format on
    for (const auto& [file, include, problem] : cases)
        EXPECT_EQ(ProblemOf(file, include), problem) << file << " includes " << include;
}

// No circle: following the includes from header to header never returns to the first.
TEST(Floors, HeadersFormNoCircle) {
    const auto tree = ReadTree();
    std::map<std::string, int> state;  // 1 in progress, 2 done
    const std::function<void(const std::string&)> visit = [&](const std::string& file) {
        const auto found = tree.find(file);
        EXPECT_NE(state[file], 1) << "a circle of includes through " << file;
        if (found == tree.end() || state[file] != 0) return;
        state[file] = 1;
        for (const std::string& include : found->second) visit(include.substr(1));
        state[file] = 2;
    };
    for (const auto& [file, includes] : tree) visit(file);
}

}  // namespace
