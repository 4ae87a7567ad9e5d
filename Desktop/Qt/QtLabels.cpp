#include <QLabel>
#include <QPainter>
#include <QProgressBar>

#include "Desktop/Qt/QtCanvasPrivate.h"
#include "Desktop/Qt/QtPeersPrivate.h"
#include "Desktop/Qt/QtTextPrivate.h"

namespace Varnholt {
namespace {

class TLabelPeer : public TQtPeerOf<TLabel, QLabel> {
public:
    explicit TLabelPeer(TLabel& label) : TQtPeerOf(label, new QLabel(ParentOf(label))) {
        Widget.setTextFormat(Qt::PlainText);
        Widget.setAlignment(Qt::AlignLeft | Qt::AlignTop);
    }

protected:
    void UpdateOwn(TControlAspect aspect) override {
        if (aspect == caText) Widget.setText(PlainCaption(Control.GetCaption()));
    }
    [[nodiscard]] bool TakesClicks() const override { return true; }
};

class TPanelPeer : public TQtPeerOf<TPanel, QLabel> {
public:
    explicit TPanelPeer(TPanel& panel) : TQtPeerOf(panel, new QLabel(ParentOf(panel))) {
        Widget.setTextFormat(Qt::PlainText);
        Widget.setAlignment(Qt::AlignCenter);
        Widget.setAutoFillBackground(true);
    }

protected:
    void UpdateOwn(TControlAspect aspect) override {
        if (aspect == caText) Widget.setText(PlainCaption(Control.GetCaption()));
    }
    [[nodiscard]] bool TakesClicks() const override { return true; }
};

class TProgressBarPeer : public TQtPeerOf<TProgressBar, QProgressBar> {
public:
    explicit TProgressBarPeer(TProgressBar& bar) : TQtPeerOf(bar, new QProgressBar(ParentOf(bar))) {
        Widget.setTextVisible(false);
    }

protected:
    void UpdateOwn(TControlAspect aspect) override {
        if (aspect != caText) return;
        const bool isKnown = Control.GetPercent() >= 0;
        Widget.setRange(0, isKnown ? 100 : 0);
        if (isKnown) Widget.setValue(Control.GetPercent());
    }
    [[nodiscard]] bool TakesClicks() const override { return true; }
};

/// A widget that is painted by a function.
class TPaintWidget : public QWidget {
public:
    using QWidget::QWidget;
    std::function<void(QPainter&)> OnPaint;

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        if (OnPaint) OnPaint(painter);
    }
};

class TPaintBoxPeer : public TQtPeerOf<TPaintBox, TPaintWidget> {
public:
    explicit TPaintBoxPeer(TPaintBox& box) : TQtPeerOf(box, new TPaintWidget(ParentOf(box))) {
        Widget.setAutoFillBackground(true);
        Widget.OnPaint = [this](QPainter& painter) { Paint(painter); };
    }

protected:
    [[nodiscard]] bool TakesClicks() const override { return true; }

private:
    /// What the event raises must not pass through the toolkit, nor open a box at each repainting.
    void Paint(QPainter& painter) {
        TQtCanvasTarget target(painter);
        TCanvas canvas(target);
        try {
            Control.GetOnPaint()(&Control, canvas, {0, 0, Control.GetWidth(), Control.GetHeight()});
        } catch (...) {
            painter.resetTransform();
        }
    }
};

class TOtherPeer : public TQtPeerOf<TWinControl, QWidget> {
public:
    explicit TOtherPeer(TWinControl& control) : TQtPeerOf(control, new QWidget(ParentOf(control))) {
        Widget.setFocusPolicy(Qt::StrongFocus);
        Widget.setAutoFillBackground(true);
    }

protected:
    [[nodiscard]] bool TakesClicks() const override { return true; }
};

}  // namespace

std::unique_ptr<TQtPeer> MakeLabelPeer(TLabel& label) {
    return std::make_unique<TLabelPeer>(label);
}

std::unique_ptr<TQtPeer> MakePanelPeer(TPanel& panel) {
    return std::make_unique<TPanelPeer>(panel);
}

std::unique_ptr<TQtPeer> MakeProgressBarPeer(TProgressBar& bar) {
    return std::make_unique<TProgressBarPeer>(bar);
}

std::unique_ptr<TQtPeer> MakePaintBoxPeer(TPaintBox& box) {
    return std::make_unique<TPaintBoxPeer>(box);
}

std::unique_ptr<TQtPeer> MakeOtherPeer(TWinControl& control) {
    return std::make_unique<TOtherPeer>(control);
}

}  // namespace Varnholt
