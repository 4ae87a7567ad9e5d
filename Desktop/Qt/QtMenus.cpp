#include "Desktop/Qt/QtBackendPrivate.h"
#include "Desktop/Qt/QtMenusPrivate.h"
#include "Desktop/Qt/QtTextPrivate.h"
#include "Platform/Controls/Application.h"

namespace Varnholt {
namespace {

/// Keeps a menu up to date with the items of one item.
void Follow(QMenu& menu, TMenuItem& item, const TChoose& choose) {
    const TComponentRef<TMenuItem> source(&item);
    const auto fill = [&menu, source, choose] {
        menu.clear();
        if (TMenuItem* const alive = source.Get()) FillMenu(menu, *alive, choose);
    };
    fill();  // for the short cuts
    QObject::connect(&menu, &QMenu::aboutToShow, fill);
}

template <typename TMenuKind>
void AddItems(TMenuKind& menu, TMenuItem& items, const TChoose& choose) {
    for (std::int32_t i = 0; i < items.GetCount(); ++i) {
        TMenuItem& item = items.GetItem(i);
        if (!item.GetVisible()) continue;
        if (item.GetCaption() == u"-") {
            menu.addSeparator();
        } else if (item.GetCount() > 0) {
            auto* const inner = new QMenu(ToQt(item.GetCaption()), &menu);
            inner->setEnabled(item.GetEnabled());
            Follow(*inner, item, choose);
            menu.addMenu(inner);
        } else {
            QAction* const action = menu.addAction(ToQt(item.GetCaption()));
            action->setEnabled(item.GetEnabled());
            action->setCheckable(item.GetChecked());
            action->setChecked(item.GetChecked());
            action->setShortcut(QKeySequence(ToQt(item.GetShortCut()), QKeySequence::PortableText));
            QObject::connect(action, &QAction::triggered, [source = TComponentRef<TMenuItem>(&item), choose] {
                if (TMenuItem* const alive = source.Get()) choose(*alive);
            });
        }
    }
}

}  // namespace

void FillMenu(QMenu& menu, TMenuItem& items, const TChoose& choose) {
    AddItems(menu, items, choose);
}

void FillMenuBar(QMenuBar& bar, TMenuItem& items, const TChoose& choose) {
    bar.clear();
    AddItems(bar, items, choose);
}

void TQtBackend::ShowPopup(TPopupMenu& menu) {
    QMenu shown;
    TComponentRef<TMenuItem> chosen;
    const TComponentRef<TPopupMenu> alive(&menu);
    FillMenu(shown, menu.GetItems(), [&](TMenuItem& item) { chosen = &item; });
    shown.popup(QPoint(menu.GetPopupPoint().X, menu.GetPopupPoint().Y));
    while (shown.isVisible() && !Application().GetTerminated()) Application().HandleMessage(true);
    if (!alive) return;
    if (!chosen || !menu.ChooseByUser(*chosen.Get())) menu.CloseByUser();
}

}  // namespace Varnholt
