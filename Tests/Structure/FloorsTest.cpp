#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <regex>
#include <string>
#include <vector>

/// The floors of the house: a file may include files of its own floor and of the floors below it, and folders
/// beside one another on a floor keep apart unless they are listed as neighbours.
namespace {

namespace fs = std::filesystem;

// Folders from the top floor down. The first entry that a path begins with is its folder.
// clang-format off
const std::vector<std::pair<std::string, int>> folders = {
    {"Tools/", 8}, {"VarnholtLib/UI/", 6}, {"VarnholtLib/Files/", 5}, {"VarnholtLib/Services/", 4},
    {"VarnholtLib/Numerics/", 4}, {"VarnholtLib/Data/", 3}, {"VarnholtLib/Foundation/", 2},
    {"VarnholtLib/", 7},  // the frame
    {"VarnholtBaseLib/", 1}, {"Platform/", 0}};
// clang-format on

/// What is wrong with one file's include, in its brackets or quotes, or nothing.
std::string ProblemOf(const std::string& from, const std::string& include) {
    const std::string to = include.substr(1);
    if (include[0] == '<') {
        const bool isPublic =
            from.ends_with(".h") && !from.ends_with("Private.h") && !from.starts_with("Tools/");
        return isPublic && to.find_first_of("/.") != std::string::npos ? "shows a third party" : "";
    }
    const auto folderOf = [](const std::string& path) {
        return std::ranges::find_if(folders,
                                    [&](const auto& folder) { return path.starts_with(folder.first); });
    };
    const auto source = folderOf(from), target = folderOf(to);
    if (target == folders.end()) return "is not written from the root of the tree";
    if (target->second > source->second) return "runs against the floors";
    return target->second == source->second && target != source ? "joins two folders of one floor" : "";
}

/// The includes of every file, each with the bracket or quote in front of it.
std::map<std::string, std::vector<std::string>> ReadTree() {
    static const std::regex directive("^\\s*#\\s*include\\s*([<\"][^\">]+)[\">].*");
    const fs::path root = VARNHOLT_SOURCE_DIR;
    std::map<std::string, std::vector<std::string>> tree;
    for (const char* top : {"Platform", "VarnholtBaseLib", "VarnholtLib", "Tools"}) {
        for (const fs::directory_entry& entry : fs::recursive_directory_iterator(root / top)) {
            if (entry.path().extension() != ".h" && entry.path().extension() != ".cpp") continue;
            std::ifstream text(entry.path());
            std::smatch match;
            for (std::string line; std::getline(text, line);)
                if (std::regex_match(line, match, directive))
                    tree[entry.path().lexically_relative(root).generic_string()].push_back(match[1]);
        }
    }
    return tree;
}

TEST(Floors, IncludesRunDownwardsAndPublicHeadersShowNoThirdParty) {
    const auto tree = ReadTree();
    EXPECT_GT(tree.size(), 100U) << "the tree was not found";
    for (const auto& [file, includes] : tree)
        for (const std::string& include : includes)
            EXPECT_EQ(ProblemOf(file, include), "") << file << " includes " << include;
}

TEST(Floors, WhatIsForbiddenIsFound) {
    // clang-format off
    const std::tuple<bool, std::string, std::string> cases[] = {
        {true, "VarnholtLib/Numerics/vrnMath.h", "\"VarnholtLib/Data/vrnGrid.h"},
        {true, "Platform/a.h", "<vector"},
        {false, "VarnholtLib/Data/vrnGrid.h", "\"VarnholtLib/Numerics/vrnMath.h"},
        {true, "Platform/a.cpp", "<a.h"},
        {false, "VarnholtLib/Numerics/vrnMath.h", "\"VarnholtLib/Services/vrnLog.h"},
        {false, "Platform/a.h", "<a.h"}, {false, "Platform/a.h", "\"VarnholtBaseLib/Arrays.h"},
        {false, "Platform/a.cpp", "\"Text.h"}};
    // clang-format on
    for (const auto& [isFine, file, include] : cases)
        EXPECT_EQ(ProblemOf(file, include).empty(), isFine) << file << " includes " << include;
}

// No circle: following the includes from header to header never comes back.
TEST(Floors, HeadersFormNoCircle) {
    const auto tree = ReadTree();
    std::map<std::string, int> state;  // 1 under way, 2 done
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
