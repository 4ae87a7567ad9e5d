#include "Desktop/Qt/Desktop.h"

#include <QApplication>
#include <QPalette>
#include <QPixmap>
#include <QWidget>

#include "Desktop/Qt/QtBackendPrivate.h"
#include "Desktop/Qt/QtPeerPrivate.h"
#include "Desktop/Qt/QtServicesPrivate.h"
#include "Platform/Controls/Form.h"
#include "Platform/Drawing/Colors.h"
#include "Platform/Runtime/Exceptions.h"
#include "Platform/Runtime/Format.h"
#include "Platform/Runtime/Paths.h"

namespace Varnholt {
namespace {

/// Gives the system colours those of the desktop.
void UseDesktopColors() {
    const QPalette palette = QApplication::palette();
    const auto use = [&](TColor system, QPalette::ColorRole role,
                         QPalette::ColorGroup group = QPalette::Active) {
        const QColor color = palette.color(group, role);
        SetSystemColor(system, static_cast<TColor>(color.red() | color.green() << 8 | color.blue() << 16));
    };
    use(clWindow, QPalette::Base);
    use(clWindowText, QPalette::Text);
    use(clBtnFace, QPalette::Window);
    use(clBtnText, QPalette::ButtonText);
    use(clBtnShadow, QPalette::Dark);
    use(clBtnHighlight, QPalette::Light);
    use(clHighlight, QPalette::Highlight);
    use(clHighlightText, QPalette::HighlightedText);
    use(clGrayText, QPalette::Text, QPalette::Disabled);
    use(clInfoBk, QPalette::ToolTipBase);
    use(clInfoText, QPalette::ToolTipText);
}

}  // namespace

struct TDesktop::TParts {
    std::unique_ptr<QApplication> Own;  // null if the program has made one
    TPlatformScope Former;
};

TDesktop::TDesktop(int& argc, char** argv) {
    if (ControlBackend() != nullptr) throw EInvalidOperation(u"There is a desktop already");
    std::unique_ptr<QApplication> own;
    if (QCoreApplication::instance() == nullptr) own = std::make_unique<QApplication>(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);  // the main form decides
    FParts.reset(new TParts{std::move(own), {}});
    UseDesktopColors();
    UseQtServices(Platform());
    SetControlBackend(std::make_shared<TQtBackend>());
}

TDesktop::~TDesktop() {
    SetControlBackend(nullptr);
}

void TDesktop::SavePicture(TCustomForm& form, StringView fileName) {
    TQtPeer* const peer = TQtPeer::Of(&form);
    if (peer == nullptr || !form.GetVisible())
        throw EInvalidOperation(Format(u"Form \"%s\" is not shown", {form.GetName()}));
    const QPixmap picture = peer->GetWidget().grab();
    if (!picture.save(QString::fromStdString(ToNativePath(fileName)), "PNG"))
        throw Exception(Format(u"Cannot write the picture \"%s\"", {fileName}));
}

}  // namespace Varnholt
