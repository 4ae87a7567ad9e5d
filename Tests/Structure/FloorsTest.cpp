#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <string>
#include <vector>

/// The floors of the house: a file may include files of its own floor and of the floors below it, and folders beside one
/// another on a floor keep apart unless they are listed as neighbours.
namespace {

namespace fs = std::filesystem;

/// Folders from the top floor down. The first entry that a path begins with is its folder.
struct TFolder {
    std::string Path;
    int Floor;
};

const std::vector<TFolder> folders = {
    {"Tools/", 8},
    {"VarnholtLib/UI/", 6},
    {"VarnholtLib/Files/", 5},
    {"VarnholtLib/Services/", 4},
    {"VarnholtLib/Numerics/", 4},
    {"VarnholtLib/Data/", 3},
    {"VarnholtLib/Foundation/", 2},
    {"VarnholtLib/", 7},  // the frame
    {"VarnholtBaseLib/", 1},
    {"Platform/", 0},
};

const TFolder* FolderOf(const std::string& path) {
    const auto found =
        std::ranges::find_if(folders, [&](const TFolder& folder) { return path.starts_with(folder.Path); });
    return found == folders.end() ? nullptr : &*found;
}

std::vector<std::string> IncludesOf(const fs::path& file) {
    static const std::regex quoted("^\\s*#\\s*include\\s*\"([^\"]+)\".*");
    std::ifstream text(file);
    std::vector<std::string> includes;
    std::smatch match;
    for (std::string line; std::getline(text, line);) {
        if (std::regex_match(line, match, quoted)) includes.push_back(match[1]);
    }
    return includes;
}

/// What is wrong with one file's include of another, or nothing.
std::string ProblemOf(const std::string& from, const std::string& to) {
    const TFolder* const source = FolderOf(from);
    const TFolder* const target = FolderOf(to);
    if (target == nullptr) return "is not written from the root of the tree";
    if (target->Floor > source->Floor) return "runs against the floors";
    if (target->Floor == source->Floor && target != source) return "joins two folders of one floor";
    return {};
}

std::map<std::string, std::vector<std::string>> ReadTree() {
    const fs::path root = VARNHOLT_SOURCE_DIR;
    std::map<std::string, std::vector<std::string>> tree;
    for (const char* top : {"Platform", "VarnholtBaseLib", "VarnholtLib", "Tools"}) {
        for (const fs::directory_entry& entry : fs::recursive_directory_iterator(root / top)) {
            const std::string extension = entry.path().extension();
            if (extension != ".h" && extension != ".cpp") continue;
            tree[entry.path().lexically_relative(root).generic_string()] = IncludesOf(entry.path());
        }
    }
    return tree;
}

TEST(Floors, IncludesRunDownwards) {
    const auto tree = ReadTree();
    std::size_t count = 0;
    for (const auto& [file, includes] : tree) {
        for (const std::string& include : includes) {
            ++count;
            EXPECT_EQ(ProblemOf(file, include), "") << file << " includes " << include;
        }
    }
    EXPECT_GT(count, 100U) << "the tree was not found";
}

TEST(Floors, ArrowsThatWouldRunUpAreFound) {
    EXPECT_EQ(ProblemOf("VarnholtLib/Numerics/vrnMath.h", "VarnholtLib/Data/vrnGrid.h"), "");
    EXPECT_NE(ProblemOf("VarnholtLib/Data/vrnGrid.h", "VarnholtLib/Numerics/vrnMath.h"), "");
    EXPECT_NE(ProblemOf("VarnholtLib/Numerics/vrnMath.h", "VarnholtLib/Services/vrnLog.h"), "");
    EXPECT_NE(ProblemOf("Platform/Runtime/Text.h", "VarnholtBaseLib/Arrays.h"), "");
    EXPECT_NE(ProblemOf("Platform/Runtime/Text.cpp", "Text.h"), "");
}

// No circle: following the includes from header to header never comes back.
TEST(Floors, HeadersFormNoCircle) {
    const auto tree = ReadTree();
    std::map<std::string, int> state;  // 1 under way, 2 done
    const std::function<void(const std::string&)> visit = [&](const std::string& file) {
        const auto found = tree.find(file);
        if (found == tree.end() || state[file] == 2) return;
        EXPECT_NE(state[file], 1) << "a circle of includes through " << file;
        if (state[file] == 1) return;
        state[file] = 1;
        for (const std::string& include : found->second) visit(include);
        state[file] = 2;
    };
    for (const auto& [file, includes] : tree) visit(file);
}

TEST(Floors, PublicHeadersShowNoThirdParty) {
    static const std::regex angled("^\\s*#\\s*include\\s*<([^>]+)>.*");
    const fs::path root = VARNHOLT_SOURCE_DIR;
    for (const auto& [file, includes] : ReadTree()) {
        if (!file.ends_with(".h") || file.ends_with("Private.h") || file.starts_with("Tools/")) continue;
        std::ifstream text(root / file);
        std::smatch match;
        for (std::string line; std::getline(text, line);) {
            if (!std::regex_match(line, match, angled)) continue;
            const std::string header = match[1];
            const bool isStandard =
                header.find('/') == std::string::npos && header.find('.') == std::string::npos;
            EXPECT_TRUE(isStandard) << file << " includes <" << header << '>';
        }
    }
}

}  // namespace
