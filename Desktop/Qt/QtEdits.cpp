#include <QKeyEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTextBlock>
#include <QToolButton>
#include <algorithm>
#include <functional>
#include <vector>

#include "Desktop/Qt/QtPeersPrivate.h"
#include "Desktop/Qt/QtTextPrivate.h"

namespace Varnholt {
namespace {

// --- One line ---

/// A line that hands the arrows up and down over.
class TLineWidget : public QLineEdit {
public:
    using QLineEdit::QLineEdit;
    std::function<void(bool isUp)> OnArrow;

protected:
    void keyPressEvent(QKeyEvent* event) override {
        const bool isArrow = event->key() == Qt::Key_Up || event->key() == Qt::Key_Down;
        if (OnArrow && isArrow && event->modifiers() == Qt::NoModifier)
            OnArrow(event->key() == Qt::Key_Up);
        else
            QLineEdit::keyPressEvent(event);
    }
};

class TLinePeer : public TQtPeerOf<TCustomEdit, TLineWidget> {
public:
    explicit TLinePeer(TCustomEdit& edit) : TQtPeerOf(edit, new TLineWidget(ParentOf(edit))) {
        QObject::connect(&Widget, &QLineEdit::textEdited, [this](const QString& text) {
            Report(caText, [&] { Control.EditByUser(FromQt(text), Widget.cursorPosition()); });
        });
        const auto select = [this] {
            const int start = Widget.hasSelectedText() ? Widget.selectionStart() : Widget.cursorPosition();
            TakeOver([&] { Control.Select(start, Widget.selectionLength()); });
        };
        QObject::connect(&Widget, &QLineEdit::selectionChanged, select);
        QObject::connect(&Widget, &QLineEdit::cursorPositionChanged, select);
        if (auto* const spin = dynamic_cast<TSpinEdit*>(&edit)) {
            Widget.setTextMargins(0, 0, spin->GetButton().GetWidth(), 0);
            Widget.OnArrow = [this, spin](bool isUp) { Report(caText, [=] { spin->SpinByUser(isUp); }); };
        }
    }

protected:
    void UpdateOwn(TControlAspect aspect) override {
        if (aspect == caText) UpdateText();
        if (aspect == caSelection && Widget.text() == ToQt(Control.GetText())) UpdateSelection();
    }
    [[nodiscard]] QPalette::ColorRole GetColorRole() const override { return QPalette::Base; }

private:
    void UpdateText() {
        const QString text = ToQt(Control.GetText());
        const auto* const edit = dynamic_cast<const TEdit*>(&Control);
        Widget.setEchoMode(edit != nullptr && edit->GetIsPassword() ? QLineEdit::Password
                                                                    : QLineEdit::Normal);
        Widget.setReadOnly(Control.GetReadOnly());
        // The widget would cut a longer text of the program.
        const int limit = Control.GetMaxLength() == 0 ? INT_MAX : Control.GetMaxLength();
        Widget.setMaxLength(std::max(limit, static_cast<int>(text.size())));
        if (Widget.text() != text) Widget.setText(text);
    }
    void UpdateSelection() {
        if (Control.GetSelLength() > 0)
            Widget.setSelection(Control.GetSelStart(), Control.GetSelLength());
        else
            Widget.setCursorPosition(Control.GetSelStart());
    }
};

class TSpinButtonPeer : public TQtPeerOf<TSpinButton, QWidget> {
public:
    explicit TSpinButtonPeer(TSpinButton& button)
        : TQtPeerOf(button, new QWidget(ParentOf(button))), FUp(MakeArrow(true)), FDown(MakeArrow(false)) {
        Widget.setCursor(Qt::ArrowCursor);
    }

protected:
    void UpdatePlace() override {
        TQtPeer::UpdatePlace();
        const int width = Control.GetWidth() - 1, middle = Control.GetHeight() / 2;
        FUp.setGeometry(0, 1, width, middle - 1);
        FDown.setGeometry(0, middle, width, Control.GetHeight() - middle - 1);
    }

private:
    QToolButton& MakeArrow(bool isUp) {
        auto* const arrow = new QToolButton(&Widget);
        arrow->setArrowType(isUp ? Qt::UpArrow : Qt::DownArrow);
        arrow->setAutoRepeat(true);
        arrow->setFocusPolicy(Qt::NoFocus);
        QObject::connect(arrow, &QToolButton::clicked, [this, isUp] {
            Report(caState, [&] {
                if (auto* const edit = dynamic_cast<TSpinEdit*>(Control.GetParent())) edit->SpinByUser(isUp);
            });
        });
        return *arrow;
    }

    QToolButton& FUp;
    QToolButton& FDown;
};

// --- Several lines ---

constexpr Char kLineBreak = u'\u2029';  // between the lines of the widget

/// A text as the widget has it, with one unit for each end of a line.
struct TShownText {
    explicit TShownText(StringView text) {
        for (std::size_t i = 0; i < text.size(); ++i) {
            Positions.push_back(i);
            if (text[i] == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n') ++i;
            const bool isEnd = text[i] == u'\r' || text[i] == u'\n';
            Text += isEnd ? kLineBreak : text[i];
        }
        Positions.push_back(text.size());
    }

    /// The position in the widget of one in the text.
    [[nodiscard]] int ShownPosition(std::int32_t position) const {
        const auto found = std::ranges::lower_bound(Positions, static_cast<std::size_t>(position));
        return static_cast<int>(std::min(found, Positions.end() - 1) - Positions.begin());
    }
    /// The position in the text of one in the widget.
    [[nodiscard]] std::int32_t Position(int shown) const {
        return static_cast<std::int32_t>(Positions[std::min(static_cast<std::size_t>(shown), Text.size())]);
    }

    String Text;
    std::vector<std::size_t> Positions;  // in the original text, of each unit and of the end
};

/// The former text with what is different in the shown one. Ends of lines that the user has not touched stay as they
/// are.
String Edited(const String& former, const String& shown) {
    const TShownText old(former);
    const std::size_t most = std::min(old.Text.size(), shown.size());
    std::size_t head = 0, tail = 0;
    while (head < most && old.Text[head] == shown[head]) ++head;
    while (tail < most - head && old.Text[old.Text.size() - 1 - tail] == shown[shown.size() - 1 - tail])
        ++tail;
    String text = former.substr(0, old.Positions[head]);
    for (const Char unit : StringView(shown).substr(head, shown.size() - head - tail))
        unit == kLineBreak ? text += u"\r\n" : text += unit;
    return text += StringView(former).substr(old.Positions[old.Text.size() - tail]);
}

class TMemoPeer : public TQtPeerOf<TMemo, QPlainTextEdit> {
public:
    explicit TMemoPeer(TMemo& memo) : TQtPeerOf(memo, new QPlainTextEdit(ParentOf(memo))) {
        Widget.setTabChangesFocus(true);
        QObject::connect(&Widget, &QPlainTextEdit::textChanged, [this] {
            const String text = Edited(Control.GetText(), FromQt(Widget.document()->toRawText()));
            if (text == Control.GetText()) return;  // only its look has changed
            const std::int32_t caret = TShownText(text).Position(Widget.textCursor().position());
            Report(caText, [&] { Control.EditByUser(text, caret); });
        });
        const auto select = [this] {
            TakeOver([this] {
                const TShownText shown(Control.GetText());
                const QTextCursor cursor = Widget.textCursor();
                const std::int32_t start = shown.Position(cursor.selectionStart());
                Control.Select(start, shown.Position(cursor.selectionEnd()) - start);
            });
        };
        QObject::connect(&Widget, &QPlainTextEdit::selectionChanged, select);
        QObject::connect(&Widget, &QPlainTextEdit::cursorPositionChanged, select);
    }

    [[nodiscard]] bool KeepsKey(std::int32_t key) const override { return key == kKeyEnter; }

protected:
    void UpdateOwn(TControlAspect aspect) override {
        if (aspect == caText) {
            Widget.setReadOnly(Control.GetReadOnly());
            const QString text = ToQt(TShownText(Control.GetText()).Text);
            if (Widget.document()->toRawText() != text) Widget.setPlainText(text);
        }
        if (aspect == caSelection) UpdateSelection();
    }
    [[nodiscard]] QPalette::ColorRole GetColorRole() const override { return QPalette::Base; }

private:
    void UpdateSelection() {
        const TShownText shown(Control.GetText());
        if (Widget.document()->toRawText() != ToQt(shown.Text)) return;  // the text is about to be updated
        QTextCursor cursor = Widget.textCursor();
        cursor.setPosition(shown.ShownPosition(Control.GetSelStart()));
        cursor.setPosition(shown.ShownPosition(Control.GetSelStart() + Control.GetSelLength()),
                           QTextCursor::KeepAnchor);
        Widget.setTextCursor(cursor);
    }
};

}  // namespace

std::unique_ptr<TQtPeer> MakeEditPeer(TEdit& edit) {
    return std::make_unique<TLinePeer>(edit);
}

std::unique_ptr<TQtPeer> MakeSpinEditPeer(TSpinEdit& edit) {
    return std::make_unique<TLinePeer>(edit);
}

std::unique_ptr<TQtPeer> MakeSpinButtonPeer(TSpinButton& button) {
    return std::make_unique<TSpinButtonPeer>(button);
}

std::unique_ptr<TQtPeer> MakeMemoPeer(TMemo& memo) {
    return std::make_unique<TMemoPeer>(memo);
}

}  // namespace Varnholt
