#include <cstdlib>
#include <iostream>

#include "Desktop/Qt/Desktop.h"
#include "Desktop/Station/MainForm.h"
#include "Platform/Runtime/Exceptions.h"
#include "Platform/Runtime/Files.h"
#include "Platform/Runtime/Paths.h"
#include "VarnholtLib/Services/vrnLog.h"
#include "VarnholtLib/Services/vrnLogCleaner.h"
#include "VarnholtLib/UI/vrnAppExceptionHandler.h"

// varnholt-station [FILE]: shows a station's file, or a session, in a window.
namespace {

using namespace Varnholt;

class TStationLog final : public TBaseLog {
public:
    [[nodiscard]] String GetLogName() const override { return u"Station"; }
};

void Run(int argc, char** argv) {
    TDesktop desktop(argc, argv);
    Application().SetTitle(u"Station");
    const auto log = TBaseLog::Create<TStationLog>();
    log->SetEnabled(true);
    TLogCleanerFactory::GetObject()->Clean();
    TAppExceptionHandler handler;
    handler.Register();
    ForceDirectories(ExtractFilePath(Station::BookmarksPath()));

    Station::TMainForm form;
    if (argc > 1) Application().Post([&] { form.OpenFile(FromNativePath(argv[1])); });
    Application().Run(form);
    form.KeepSettings();
}

}  // namespace

int main(int argc, char** argv) {
    try {
        Run(argc, argv);
        return EXIT_SUCCESS;
    } catch (const Exception& failure) {
        std::cerr << "varnholt-station: " << failure.what() << '\n';
        return EXIT_FAILURE;
    }
}
