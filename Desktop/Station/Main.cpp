#include <cstdlib>
#include <iostream>
#include <span>
#include <string_view>

#include "Desktop/Qt/Desktop.h"
#include "Desktop/Station/MainForm.h"
#include "Platform/Runtime/Exceptions.h"
#include "Platform/Runtime/Files.h"
#include "Platform/Runtime/Paths.h"
#include "VarnholtLib/Services/vrnLog.h"
#include "VarnholtLib/Services/vrnLogCleaner.h"
#include "VarnholtLib/UI/vrnAppExceptionHandler.h"

// varnholt-station [--picture PNG] [FILE]: shows a station's file, or a session, in a window. With --picture it writes a
// picture of that to a PNG file, and ends.
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
    const std::span arguments(argv + 1, static_cast<std::size_t>(argc - 1));
    const bool isPicture = arguments.size() > 1 && std::string_view(arguments[0]) == "--picture";
    Application().Post([&] {
        if (arguments.size() > (isPicture ? 2 : 0)) form.OpenFile(FromNativePath(arguments.back()));
    });
    TTimer picture;  // once all is drawn
    picture.SetInterval(300);
    picture.SetOnTimer([&](TObject*) {
        Application().Terminate();
        desktop.SavePicture(form, FromNativePath(arguments[1]));
    });
    picture.SetEnabled(isPicture);
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
