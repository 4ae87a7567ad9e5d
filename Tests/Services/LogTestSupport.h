#pragma once

#include "Platform/System/Platform.h"
#include "Tests/Support/TemporaryFolder.h"
#include "VarnholtLib/Services/vrnLog.h"

namespace Varnholt::Test {

class TSteeredClock : public IClock {
public:
    TDateTime Now() override { return Time; }

    TDateTime Time = 45000.5;
};

/// Names only the user's documents.
class TDocuments : public IKnownFolders {
public:
    explicit TDocuments(StringView path) : Path(path) {}
    String Find(TKnownFolder folder) override { return folder == kfPersonal ? Path : String(); }

    String Path;
};

/// A machine whose documents are the drive D:, until the end of its scope.
class TLogMachine {
public:
    TLogMachine() {
        Platform().Clock = Clock;
        Platform().KnownFolders = Documents;
    }

    const TTemporaryDrive Drive{u'D'};
    const std::shared_ptr<TSteeredClock> Clock = std::make_shared<TSteeredClock>();
    const std::shared_ptr<TDocuments> Documents = std::make_shared<TDocuments>(u"D:\\");

private:
    const TPlatformScope FScope;
};

class TNamedLog : public TBaseLog {
public:
    explicit TNamedLog(StringView name) : FName(name) {}
    String GetLogName() const override { return FName; }

private:
    String FName;
};

}  // namespace Varnholt::Test
