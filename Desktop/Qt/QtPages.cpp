#include <QTabBar>
#include <QTabWidget>

#include "Desktop/Qt/QtPeersPrivate.h"
#include "Desktop/Qt/QtTextPrivate.h"

namespace Varnholt {
namespace {

/// Its pages are children of the tab widget, which places and shows them.
class TPageControlPeer : public TQtPeerOf<TPageControl, QTabWidget> {
public:
    explicit TPageControlPeer(TPageControl& pages) : TQtPeerOf(pages, new QTabWidget(ParentOf(pages))) {
        Widget.setDocumentMode(true);  // no frame: the pages are as wide as the control
        QObject::connect(&Widget, &QTabWidget::currentChanged, [this](int index) {
            Report(caSelection, [&] { Control.SelectPageByUser(index); });
        });
    }

    [[nodiscard]] TSize GetClientSize() override {
        const int tabs = Widget.tabBar()->sizeHint().height();
        return {Control.GetWidth(), std::max(Control.GetHeight() - tabs, 0)};
    }

    void UpdatePages() {
        int index = 0;
        for (std::int32_t i = 0; i < Control.GetPageCount(); ++i) {
            TTabSheet& page = Control.GetPage(i);
            TQtPeer* const peer = Of(&page);
            if (peer == nullptr) continue;
            if (Widget.widget(index) != &peer->GetWidget())
                Widget.insertTab(index, &peer->GetWidget(), QString());
            Widget.setTabText(index, ToQt(page.GetCaption()));
            Widget.setTabEnabled(index, page.GetEnabled());
            ++index;
        }
        Control.Realign();  // the tabs have their height now
    }

protected:
    void UpdateOwn(TControlAspect aspect) override {
        if (aspect == caItems) UpdatePages();
        if (aspect != caItems && aspect != caSelection) return;
        if (TQtPeer* const page = Of(Control.GetActivePage())) Widget.setCurrentWidget(&page->GetWidget());
    }
};

class TTabSheetPeer : public TQtPeerOf<TTabSheet, QWidget> {
public:
    explicit TTabSheetPeer(TTabSheet& page) : TQtPeerOf(page, new QWidget(ParentOf(page))) { Widget.hide(); }

protected:
    void UpdatePlace() override {}
    void UpdateVisible() override {}
    void UpdateOwn(TControlAspect aspect) override {
        if (aspect == caText || aspect == caState)
            if (TQtPeer* const pages = Of(Control.GetParent())) pages->Update(caItems);
    }
};

}  // namespace

std::unique_ptr<TQtPeer> MakePageControlPeer(TPageControl& pages) {
    return std::make_unique<TPageControlPeer>(pages);
}

std::unique_ptr<TQtPeer> MakeTabSheetPeer(TTabSheet& page) {
    return std::make_unique<TTabSheetPeer>(page);
}

}  // namespace Varnholt
