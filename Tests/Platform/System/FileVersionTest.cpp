#include "Platform/System/FileVersion.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "Platform/Runtime/Files.h"
#include "Tests/Support/TemporaryFolder.h"

namespace Varnholt::Test {
namespace {

/// The bytes of a file, filled number by number. What nothing is put in is zero.
class TImage {
public:
    explicit TImage(std::size_t size, bool isBigEndian = false) : FBytes(size, '\0'), FIsBig(isBigEndian) {}

    TImage& Put(std::size_t at, std::size_t width, std::uint64_t value) {
        for (std::size_t i = 0; i < width; ++i)
            FBytes.at(FIsBig ? at + width - 1 - i : at + i) = static_cast<char>(value >> (8 * i));
        return *this;
    }
    TImage& Put(std::size_t at, std::string_view bytes) {
        FBytes.replace(at, bytes.size(), bytes);
        return *this;
    }
    [[nodiscard]] const std::string& GetBytes() const { return FBytes; }

private:
    std::string FBytes;
    bool FIsBig;
};

/// A library with one section, at 0x200 in the file and 0x1000 in memory, which holds the version 1.2.3.65535.
std::string WindowsFile(bool isWide) {
    const std::size_t optional = 0x40 + 24, optionalSize = isWide ? 240 : 224;
    const std::size_t directories = optional + (isWide ? 112 : 96), section = optional + optionalSize;
    TImage image(0x200 + 0x60 + 92);
    image.Put(0, "MZ").Put(0x3C, 4, 0x40).Put(0x40, "PE").Put(0x46, 2, 1).Put(0x54, 2, optionalSize);
    image.Put(optional, 2, isWide ? 0x20B : 0x10B)
        .Put(directories - 4, 4, 16)
        .Put(directories + 16, 4, 0x1000);
    image.Put(section + 12, 4, 0x1000).Put(section + 16, 4, 0x200).Put(section + 20, 4, 0x200);
    const std::size_t root = 0x200;
    image.Put(root + 14, 2, 2).Put(root + 16, 4, 3).Put(root + 24, 4, 16).Put(root + 28, 4, 0x80000020);
    image.Put(root + 0x2E, 2, 1).Put(root + 0x34, 4, 0x80000038);
    image.Put(root + 0x46, 2, 1)
        .Put(root + 0x4C, 4, 0x50)
        .Put(root + 0x50, 4, 0x1060)
        .Put(root + 0x54, 4, 92);
    image.Put(root + 0x60, 2, 92).Put(root + 0x62, 2, 52).Put(root + 0x60 + 40, 4, 0xFEEF04BD);
    return image.Put(root + 0x60 + 48, 4, 0x10002).Put(root + 0x60 + 52, 4, 0x3FFFF).GetBytes();
}

/// A program with a header of a segment or section of two notes, of which the second is the version 1.2.3.65535.
std::string ElfFile(bool isWide, bool isBigEndian, bool isSection) {
    const std::size_t width = isWide ? 8 : 4, table = isWide ? 64 : 52;
    const std::size_t notes = table + 64, sizes = isWide ? 54 : 42;
    TImage image(notes + 20 + 32, isBigEndian);
    image
        .Put(0,
             "\x7F"
             "ELF")
        .Put(4, 1, isWide ? 2 : 1)
        .Put(5, 1, isBigEndian ? 2 : 1);
    const std::size_t kind = isSection ? 1 : 0;
    image.Put((isWide ? 32 : 28) + kind * width, width, table).Put(sizes + 4 * kind, 2, 64);
    image.Put(sizes + 4 * kind + 2, 2, 1).Put(table + 4 * kind, 4, isSection ? 7 : 4);
    const std::size_t offsetAt = isSection ? (isWide ? 24 : 16) : (isWide ? 8 : 4);
    const std::size_t sizeAt = isSection ? (isWide ? 32 : 20) : (isWide ? 32 : 16);
    image.Put(table + offsetAt, width, notes).Put(table + sizeAt, width, 20 + 32);
    image.Put(notes, 4, 4).Put(notes + 4, 4, 3).Put(notes + 8, 4, 1).Put(notes + 12, "GNU");
    const std::size_t note = notes + 20;
    image.Put(note, 4, 9).Put(note + 4, 4, 8).Put(note + 8, 4, kVersionNoteType).Put(note + 12, "Varnholt");
    for (std::size_t i = 0; i < 4; ++i) image.Put(note + 24 + 2 * i, 2, i == 3 ? 65535 : i + 1);
    return image.GetBytes();
}

String VersionOf(std::string_view bytes) {
    return ReadFileVersion(std::as_bytes(std::span(bytes)));
}

TEST(FileVersion, IsReadFromWholeFilesOnly) {
    std::vector<std::string> files = {WindowsFile(false), WindowsFile(true)};
    for (const int kind : {0, 1, 2, 3, 4, 5, 6, 7})
        files.push_back(ElfFile((kind & 1) != 0, (kind & 2) != 0, (kind & 4) != 0));
    for (const std::string& file : files) {
        SCOPED_TRACE(&file - files.data());
        EXPECT_EQ(VersionOf(file), u"1.2.3.65535");
        for (std::size_t size = 0; size < file.size(); ++size)
            EXPECT_EQ(VersionOf(file.substr(0, size)), u"") << size;
        for (std::size_t at = 0; at < file.size(); ++at) {
            std::string changed = file;
            for (const char byte : {'\xFF', '\x7F', '\x01'}) {
                changed[at] = byte;
                static_cast<void>(VersionOf(changed));  // must end, inside the file
            }
        }
    }
    const TTemporaryFolder folder;
    WriteFileInOneGo(folder.GetPath(u"x.dll"), files[0]);
    EXPECT_EQ(ReadFileVersion(folder.GetPath(u"x.dll")), u"1.2.3.65535");
}

TEST(FileVersion, DirectoryThatRefersToItselfEnds) {
    std::string file = WindowsFile(true);
    for (const std::size_t entry : {0x21CU, 0x234U, 0x24CU}) file.replace(entry, 4, "\0\0\0\x80", 4);
    EXPECT_EQ(VersionOf(file), u"");
}

}  // namespace
}  // namespace Varnholt::Test
