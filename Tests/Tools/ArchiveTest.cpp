#include "Tests/Tools/ProgramTest.h"

namespace Varnholt::Test {
namespace {

class ArchiveCommands : public TProgramTest {
protected:
    ArchiveCommands() : TProgramTest("") {}
};

TEST_F(ArchiveCommands, PackListAndUnpack) {
    ForceDirectories(Folder.GetPath(u"in\\sub"));
    Write(u"in\\a.txt", "hi");
    Write(u"in\\sub\\a.txt", "");
    const std::string at = "varnholt: " + Folder.GetNativePath();
    const std::string inBase =
        at + "/in/a.txt: This was is not contained within the specified base directory\n";
    const std::string twice = at + "/in/sub/a.txt: This file is already in the source file list\n";
    const TProgramCase cases[] = {
        {"pack x.vrn in", 1, "",
         "varnholt: Two files would be stored as \"a.txt\"; --keep-folders stores them with their folders\n"},
        {"pack x.vrn none", 1, "", "varnholt: Cannot open file \"none\": No such file or directory\n"},
        {"pack x.vrn in --base in/sub", 1, "", inBase.c_str()},
        {"pack x.vrn in --keep-folders --level 0", 0, "", ""},
        {"list x.vrn", 0,
         "      size      packed    ratio  name\n         2          13  650.0 %  in\\a.txt\n"
         "         0          11        -  in\\sub\\a.txt\n",
         ""},
        {"unpack x.vrn --to out", 0, "", ""},
        {"unpack x.vrn --to out --skip", 0, "", ""},
        {"unpack x.vrn --to out --overwrite", 0, "", ""},
        {"pack x.vrn x.vrn in --keep-folders --level 0", 0, "",
         "varnholt: x.vrn: The archive itself; it is left out\n"},
        {"pack y.vrn in/sub/a.txt ./in/sub/a.txt", 1, "", twice.c_str()},
        {"list in/a.txt", 1, "", "varnholt: in/a.txt: The archive is not in a valid format.\n"},
        {"list none", 1, "", "varnholt: none: The archive cannot be accessed\n"},
    };
    ExpectAll(cases, {"pack x.vrn", "pack x.vrn in --level 4", "unpack x.vrn --skip --overwrite"});
    EXPECT_EQ(Content(u"out\\in\\a.txt"), "hi");
    EXPECT_EQ(Run("unpack x.vrn --to out"), 1);
    EXPECT_TRUE(
        Content(u"reported")
            .ends_with("out/in/a.txt\" exists; --overwrite replaces such files, --skip leaves them\n"));
    EXPECT_EQ(Names(), "in\nout\nprinted\nreported\nx.vrn\n");
    // A damaged entry is reported, and the others are extracted.
    std::string bytes = Content(u"x.vrn");
    bytes[17 + 225 + 7] = 'H';
    Write(u"x.vrn", bytes);
    EXPECT_EQ(Run("unpack x.vrn --to again"), 1);
    EXPECT_EQ(Content(u"reported"),
              "varnholt: in\\a.txt: The compressed data are damaged\n"
              "varnholt: 1 of 2 files were not extracted\n");
    EXPECT_TRUE(FileExists(Folder.GetPath(u"again\\in\\sub\\a.txt")));
    EXPECT_EQ(Run("--help; trap '' XFSZ; ulimit -f 0; '" VARNHOLT_PROGRAM "' pack new.vrn in/a.txt"), 1);
    EXPECT_FALSE(FileExists(Folder.GetPath(u"new.vrn")));
}

TEST_F(ArchiveCommands, PackRefusesWhatCannotBeUnpacked) {
    Run("--help >/dev/null; mkdir -p far/in d && ln -s far/in link && echo FAR >far/x.txt && echo NEAR "
        ">x.txt && mkfifo d/pipe && "
        "ln -s ../far d/far && ln -s loop d/loop && echo >d/real && echo >aux.c && echo >$(printf "
        "'n%0200d')");
    const std::string longName =
        "varnholt: n" + std::string(200, '0') + ": The name has more than 200 characters\n";
    const TProgramCase cases[] = {
        {"pack x.vrn link/../x.txt", 0, "", ""},
        {"pack y.vrn d/pipe", 1, "", "varnholt: d/pipe: Not a regular file\n"},
        {"pack y.vrn aux.c", 1, "", "varnholt: aux.c: A file of this name could not be extracted\n"},
        {"pack y.vrn n0*", 1, "", longName.c_str()},
        {"pack y.vrn d", 0, "",
         "varnholt: d/far: A link to a folder; it is left out\nvarnholt: d/loop: Not a regular file; it is "
         "left out\n"
         "varnholt: d/pipe: Not a regular file; it is left out\n"}};
    ExpectAll(cases, {"pack - x.txt"});
    EXPECT_EQ(Run("unpack x.vrn --to 'y\\'"), 0);
    EXPECT_EQ(ReadWholeFile(FromNativePath(Folder.GetNativePath() + "/y\\/x.txt")), "FAR\n");
}

}  // namespace
}  // namespace Varnholt::Test
