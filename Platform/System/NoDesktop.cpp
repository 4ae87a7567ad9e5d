#include <unistd.h>

#include <algorithm>
#include <string>
#include <utility>

#include "Platform/System/RealPlatformPrivate.h"

/// The services of a desktop where there is none.
namespace Varnholt {
namespace {

class TStandardErrorBoxes final : public IMessageBoxes {
public:
    TModalResult Show(const TMessageBox& box) override {
        const std::string line = ToUtf8(box.Text) + '\n';
        static_cast<void>(!write(STDERR_FILENO, line.data(), line.size()));
        if (box.Buttons.empty()) return mrOk;
        return box.Buttons[std::min(box.DefaultButton, box.Buttons.size() - 1)];
    }
};

class TNoFileDialogs final : public IFileDialogs {
public:
    bool ChooseFile(TFileDialogRequest&) override { return false; }
    bool ChooseFolder(TFolderDialogRequest&) override { return false; }
};

class TProcessClipboard final : public IClipboard {
public:
    bool HasText() override { return FHasText; }
    String GetText() override { return FText; }
    void SetText(StringView text) override {
        FText = text;
        FHasText = true;
    }

private:
    String FText;
    bool FHasText = false;
};

class TNoKeyboard final : public IKeyboard {
public:
    std::int16_t GetKeyState(std::int32_t) override { return 0; }
};

class TNoScreen final : public IScreen {
public:
    std::uintptr_t GetActiveFormHandle() override { return FActiveForm; }
    void SetActiveFormHandle(std::uintptr_t handle) override { FActiveForm = handle; }
    bool BringWindowToTop(std::uintptr_t) override { return false; }
    std::int32_t GetPixelsPerInch() override { return 96; }
    std::int32_t GetWidth() override { return 1920; }
    std::int32_t GetHeight() override { return 1080; }
    std::int16_t GetCursor() override { return FCursor; }
    void SetCursor(std::int16_t cursor) override { FCursor = cursor; }

private:
    std::uintptr_t FActiveForm = 0;
    std::int16_t FCursor = 0;
};

}  // namespace

void UseNoDesktop(TPlatform& platform) {
    platform.Screen = std::make_shared<TNoScreen>();
    platform.MessageBoxes = std::make_shared<TStandardErrorBoxes>();
    platform.FileDialogs = std::make_shared<TNoFileDialogs>();
    platform.Clipboard = std::make_shared<TProcessClipboard>();
    platform.Keyboard = std::make_shared<TNoKeyboard>();
}

}  // namespace Varnholt
