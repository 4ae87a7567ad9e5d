#pragma once

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdlib>
#include <initializer_list>
#include <span>
#include <string>

#include "Platform/Runtime/Files.h"
#include "Tests/Support/TemporaryFolder.h"

namespace Varnholt::Test {

/// One call of a command and what it does.
struct TProgramCase {
    const char* Arguments;
    int Status;
    const char* Out;
    const char* Reported;
};

/// The program as its users run it: in a folder of its own, arguments in; exit status, output, messages and
/// files out.
class TProgramTest : public ::testing::Test {
protected:
    explicit TProgramTest(const char* command) : FCommand(command) {}

    /// Runs the command and returns its exit status. What it prints is the files "printed" and "reported".
    int Run(const std::string& arguments) {
        const std::string line = "cd '" + Folder.GetNativePath() + "' && { '" VARNHOLT_PROGRAM "' " +
                                 FCommand + " " + arguments + "; } >printed 2>reported";
        const int status = std::system(line.c_str());
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

    void Write(StringView name, std::string_view content) { WriteFileInOneGo(Folder.GetPath(name), content); }
    /// The names in the folder, one a line, with the two files of Run.
    std::string Names() {
        Run("--help >/dev/null; LC_ALL=C ls");
        return Content(u"printed");
    }
    std::string Content(StringView name) { return ReadWholeFile(Folder.GetPath(name)); }

    void ExpectAll(std::span<const TProgramCase> cases, std::initializer_list<const char*> wrongUsages) {
        for (const auto& [arguments, status, out, reported] : cases) {
            EXPECT_EQ(Run(arguments), status) << arguments;
            EXPECT_EQ(Content(u"printed"), out) << arguments;
            EXPECT_EQ(Content(u"reported"), reported) << arguments;
        }
        for (const char* wrong : wrongUsages) EXPECT_EQ(Run(wrong), 2) << wrong;
    }

    TTemporaryFolder Folder;

private:
    std::string FCommand;
};

}  // namespace Varnholt::Test
