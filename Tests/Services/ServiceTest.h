#pragma once

#include <gtest/gtest.h>

#include "Platform/System/Platform.h"
#include "Tests/Support/TemporaryFolder.h"
#include "VarnholtLib/Services/vrnLog.h"

namespace Varnholt::Test {

/// A machine of its own: the only folder is that of the user's documents, the drive D:, and the clock stands.
class TServiceTest : public ::testing::Test, public IKnownFolders, public IClock {
protected:
    TServiceTest() {
        Platform().Clock = {std::shared_ptr<void>(), this};
        Platform().KnownFolders = {std::shared_ptr<void>(), this};
    }
    TDateTime Now() override { return Time; }
    TDateTime NowUtc() override { return Time; }
    String Find(TKnownFolder folder) override { return folder == Known ? Folder : String(); }

    class TNamedLog : public TBaseLog {
    public:
        explicit TNamedLog(StringView name) : FName(name) {}
        String GetLogName() const override { return FName; }

    private:
        String FName;
    };

    const TTemporaryDrive Drive{u'D'};
    TDateTime Time = 45000.5;
    TKnownFolder Known = kfPersonal;
    String Folder = u"D:\\";

private:
    const TPlatformScope FScope;
};

}  // namespace Varnholt::Test
