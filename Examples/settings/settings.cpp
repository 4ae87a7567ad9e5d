#include <cstdlib>
#include <iostream>

#include "VarnholtLib/Services/vrnConfig.h"
#include "VarnholtLib/Services/vrnLog.h"

// Keeps an application's settings and a log: counts how often it was started and, with an argument, stores it as the
// station to open at the next start.
namespace {

using namespace Varnholt;

class TApplicationLog : public TBaseLog {
public:
    [[nodiscard]] String GetLogName() const override { return u"Settings example"; }
};

void Run(const char* station) {
    TVarnConfig config(vPrivate, u"Examples", u"Settings");
    const std::int32_t starts = config.ReadInteger(u"application.starts", 0) + 1;
    config.WriteInteger(u"application.starts", starts);
    config.SetCurrentPath(u"application.station");
    const String former = config.ReadString(u".name", u"Seattle");
    if (station != nullptr) config.WriteString(u".name", FromUtf8(station));
    config.Save();
    std::cout << "Start " << starts << ", station " << ToUtf8(former) << '\n';
}

}  // namespace

int main(int argc, char** argv) {
    const auto log = TBaseLog::Create<TApplicationLog>();
    log->SetEnabled(true);
    try {
        Run(argc > 1 ? argv[1] : nullptr);
        return EXIT_SUCCESS;
    } catch (const Exception& failure) {
        log->Error(u"%s", {failure.GetMessage()});
        std::cerr << failure.what() << '\n';
        return EXIT_FAILURE;
    }
}
