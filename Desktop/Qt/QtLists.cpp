#include <QComboBox>
#include <QLineEdit>
#include <QListView>

#include "Desktop/Qt/QtItemsPrivate.h"
#include "Desktop/Qt/QtPeersPrivate.h"

namespace Varnholt {
namespace {

class TComboBoxPeer : public TQtPeerOf<TComboBox, QComboBox> {
public:
    explicit TComboBoxPeer(TComboBox& comboBox)
        : TQtPeerOf(comboBox, new QComboBox(ParentOf(comboBox))), FModel(comboBox.GetItems()) {
        Widget.setEditable(true);
        Widget.setInsertPolicy(QComboBox::NoInsert);
        Widget.setCompleter(nullptr);
        Widget.setModel(&FModel);
        QObject::connect(&Widget, &QComboBox::activated,
                         [this](int index) { Report(caSelection, [&] { Control.SelectByUser(index); }); });
        QObject::connect(Widget.lineEdit(), &QLineEdit::textEdited, [this](const QString& text) {
            Report(caSelection, [&] { Control.TypeByUser(FromQt(text)); });
        });
    }
    ~TComboBoxPeer() override { DropWidget(); }  // before the model

protected:
    void UpdateOwn(TControlAspect aspect) override {
        if (aspect == caItems) FModel.Reset();
        if (aspect == caItems || aspect == caSelection) UpdateSelection();
    }
    [[nodiscard]] QPalette::ColorRole GetColorRole() const override { return QPalette::Base; }

private:
    void UpdateSelection() {
        const QString text = ToQt(Control.GetText());
        const int caret = Widget.lineEdit()->cursorPosition();
        if (Widget.currentIndex() != Control.GetItemIndex()) Widget.setCurrentIndex(Control.GetItemIndex());
        if (Widget.currentText() != text) Widget.setEditText(text);
        Widget.lineEdit()->setCursorPosition(caret);
    }

    TItemsModel FModel;
};

class TListBoxPeer : public TQtPeerOf<TListBox, TPressView<QListView>> {
public:
    explicit TListBoxPeer(TListBox& listBox)
        : TQtPeerOf(listBox, new TPressView<QListView>(ParentOf(listBox))), FModel(listBox.GetItems()) {
        Widget.setModel(&FModel);
        Widget.setUniformItemSizes(true);
        Widget.setEditTriggers(QAbstractItemView::NoEditTriggers);
        Widget.OnPress = [this](int row, Qt::KeyboardModifiers) {
            Report(caSelection, [&] { Control.SelectByUser(row); });
        };
        QObject::connect(Widget.selectionModel(), &QItemSelectionModel::selectionChanged, [this] {
            if (!Widget.IsPressing()) Report(caSelection, [this] { TakeSelection(); });
        });
    }
    ~TListBoxPeer() override { DropWidget(); }  // before the model

protected:
    void UpdateOwn(TControlAspect aspect) override {
        if (aspect == caState)
            Widget.setSelectionMode(Control.GetMultiSelect() ? QAbstractItemView::MultiSelection
                                                             : QAbstractItemView::SingleSelection);
        if (aspect == caItems) FModel.Reset();
        if (aspect == caItems || aspect == caSelection)
            SelectRows(Widget, Control.GetItemIndex(), IsSelected());
    }
    [[nodiscard]] QPalette::ColorRole GetColorRole() const override { return QPalette::Base; }

private:
    [[nodiscard]] std::function<bool(int row)> IsSelected() const {
        return [this](int row) { return row < Control.GetItems().GetCount() && Control.GetSelected(row); };
    }
    /// Keys and dragging.
    void TakeSelection() {
        for (const int row : ChangedRows(Widget, IsSelected()))
            if (Control.GetMultiSelect() || !Control.GetSelected(row)) Control.SelectByUser(row);
    }

    TItemsModel FModel;
};

}  // namespace

std::unique_ptr<TQtPeer> MakeComboBoxPeer(TComboBox& comboBox) {
    return std::make_unique<TComboBoxPeer>(comboBox);
}

std::unique_ptr<TQtPeer> MakeListBoxPeer(TListBox& listBox) {
    return std::make_unique<TListBoxPeer>(listBox);
}

}  // namespace Varnholt
