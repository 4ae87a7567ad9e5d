#include <QCheckBox>
#include <QPushButton>
#include <QRadioButton>

#include "Desktop/Qt/QtPeersPrivate.h"
#include "Desktop/Qt/QtTextPrivate.h"

namespace Varnholt {
namespace {

template <typename TKind, typename TWidgetKind>
class TButtonPeer : public TQtPeerOf<TKind, TWidgetKind> {
public:
    explicit TButtonPeer(TKind& button)
        : TQtPeerOf<TKind, TWidgetKind>(button, new TWidgetKind(TQtPeer::ParentOf(button))) {
        this->Widget.setAutoExclusive(false);  // the controls know which one is checked
        QObject::connect(&this->Widget, &QAbstractButton::clicked,
                         [this] { this->Report(caState, [this] { this->Control.ClickByUser(); }); });
    }

protected:
    void UpdateOwn(TControlAspect aspect) override {
        if (aspect == caText) this->Widget.setText(ToQt(this->Control.GetCaption()));
        if (aspect == caState) UpdateState();
    }

private:
    void UpdateState() {
        if constexpr (std::is_same_v<TKind, TButton>)
            this->Widget.setDefault(this->Control.GetDefault());
        else
            this->Widget.setChecked(this->Control.GetChecked());
    }
};

}  // namespace

std::unique_ptr<TQtPeer> MakeButtonPeer(TButton& button) {
    return std::make_unique<TButtonPeer<TButton, QPushButton>>(button);
}

std::unique_ptr<TQtPeer> MakeCheckBoxPeer(TCheckBox& checkBox) {
    return std::make_unique<TButtonPeer<TCheckBox, QCheckBox>>(checkBox);
}

std::unique_ptr<TQtPeer> MakeRadioButtonPeer(TRadioButton& radioButton) {
    return std::make_unique<TButtonPeer<TRadioButton, QRadioButton>>(radioButton);
}

}  // namespace Varnholt
