#pragma once

#include <memory>
#include <vector>

#include "Platform/System/Platform.h"

namespace Varnholt::Test {

/// Records the message boxes of a scope, and answers them in turn with the results in Answers, then with the default.
class TRecordedBoxes : public IMessageBoxes {
public:
    TRecordedBoxes() { Platform().MessageBoxes = {std::shared_ptr<void>(), this}; }
    TModalResult Show(const TMessageBox& box) override {
        Boxes.push_back(box);
        const std::size_t shown = Boxes.size();
        return shown <= Answers.size() ? Answers[shown - 1] : box.Buttons[box.DefaultButton];
    }

    std::vector<TMessageBox> Boxes;
    std::vector<TModalResult> Answers;

private:
    const TPlatformScope FScope;
};

}  // namespace Varnholt::Test
