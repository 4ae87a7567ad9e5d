#include <QAbstractScrollArea>
#include <QApplication>
#include <QFont>
#include <QImage>
#include <QScrollBar>
#include <QVariant>

#include <algorithm>

#include "Desktop/Qt/QtPeerPrivate.h"
#include "Desktop/Qt/QtTextPrivate.h"
#include "Platform/Drawing/Canvas.h"

namespace Varnholt {
namespace {

constexpr std::int32_t kLargestSide = QWIDGETSIZE_MAX;
constexpr const char* kPeerOfWidget = "varnholt peer";

}  // namespace

QString PlainCaption(StringView caption) {
    QString plain;
    for (std::size_t i = 0; i < caption.size(); ++i) {
        if (caption[i] == u'&' && i + 1 < caption.size()) ++i;
        plain += QChar(caption[i]);
    }
    return plain;
}

QFont ToQt(const TFont& font) {
    QFont converted = QApplication::font();
    if (!font.Name.empty()) converted.setFamily(ToQt(font.Name));
    converted.setPixelSize((std::clamp(font.Size, 1, 10'000) * 96 + 36) / 72);
    converted.setBold(font.Style.Contains(fsBold));
    converted.setItalic(font.Style.Contains(fsItalic));
    converted.setUnderline(font.Style.Contains(fsUnderline));
    converted.setStrikeOut(font.Style.Contains(fsStrikeOut));
    return converted;
}

QColor ToQtColor(TColor color) {
    const TColor plain = ColorToRGB(color);
    return {static_cast<int>(plain & 0xFF), static_cast<int>(plain >> 8 & 0xFF),
            static_cast<int>(plain >> 16 & 0xFF)};
}

TQtPeer::TQtPeer(TControl& control, QWidget* widget) : FControl(control), FWidget(widget) {
    widget->setProperty(kPeerOfWidget, QVariant::fromValue(static_cast<void*>(this)));
    widget->setObjectName(ToQt(control.GetName()));
    FItemsTimer.setSingleShot(true);
    QObject::connect(&FItemsTimer, &QTimer::timeout, [this] { UpdateItemsNow(); });
    ConnectScroll();
}

TQtPeer::~TQtPeer() {
    DropWidget();
}

void TQtPeer::DropWidget() noexcept {
    if (FWidget == nullptr) return;
    FIsUpdating = true;
    FWidget->setProperty(kPeerOfWidget, {});
    delete FWidget;
}

TQtPeer* TQtPeer::Of(const TControl* control) noexcept {
    return control == nullptr ? nullptr : static_cast<TQtPeer*>(control->GetPeer());
}

TQtPeer* TQtPeer::Around(const QWidget* widget) noexcept {
    // A box of the toolkit is a window of its own, whatever window it belongs to.
    for (; widget != nullptr; widget = widget->isWindow() ? nullptr : widget->parentWidget())
        if (void* const peer = widget->property(kPeerOfWidget).value<void*>())
            return static_cast<TQtPeer*>(peer);
    return nullptr;
}

QWidget* TQtPeer::ParentOf(const TControl& control) {
    TQtPeer* const parent = Of(control.GetParent());
    return parent == nullptr ? nullptr : &parent->GetContainer();
}

// --- What the control is ---

void TQtPeer::UpdateAll() {
    for (const TControlAspect aspect : {caLook, caText, caItems, caState, caBounds, caScroll}) Update(aspect);
    UpdateItemsNow();
    Update(caSelection);
}

void TQtPeer::Update(TControlAspect aspect) {
    if (FWidget == nullptr) return;
    const TUpdating scope(FIsUpdating);
    if (aspect == caItems) return UpdateItemsLater();
    if (aspect == caSelection && FHasNewItems) return;
    if (aspect == caBounds) UpdatePlace();
    if (aspect == caLook) UpdateLook();
    if (aspect == caRepaint) FWidget->update();
    if (aspect == caScroll) UpdateScroll();
    if (aspect == caState) {
        FWidget->setEnabled(FControl.GetEnabled());
        UpdateVisible();
    }
    if (aspect == caFocus) {
        const auto* const focusable = dynamic_cast<const TWinControl*>(&FControl);
        if (focusable != nullptr && focusable->Focused()) FWidget->setFocus(Qt::OtherFocusReason);
    }
    UpdateOwn(aspect);
}

void TQtPeer::UpdateItemsLater() {
    ForgetItems();
    if (std::exchange(FHasNewItems, true)) return;
    FItemsTimer.start(0);
}

void TQtPeer::UpdateItemsNow() {
    if (!std::exchange(FHasNewItems, false)) return;
    const TUpdating scope(FIsUpdating);
    UpdateOwn(caItems);
}

void TQtPeer::UpdatePlace() {
    FWidget->setGeometry(FControl.GetLeft(), FControl.GetTop(), std::min(FControl.GetWidth(), kLargestSide),
                         std::min(FControl.GetHeight(), kLargestSide));
}

void TQtPeer::UpdateVisible() {
    FWidget->setVisible(FControl.GetVisible());
}

void TQtPeer::UpdateLook() {
    FWidget->setFont(ToQt(FControl.GetFont()));
    FWidget->setToolTip(ToQt(FControl.GetHint()));
    QPalette palette = QApplication::palette(FWidget);
    const QColor text = ToQtColor(FControl.GetFont().Color);
    // System colours are those of the desktop already, in all their states.
    if (FControl.GetFont().Color <= clWhite)
        for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
            palette.setColor(role, text);
    palette.setColor(GetColorRole(), ToQtColor(FControl.GetColor()));
    FWidget->setPalette(palette);
}

// --- Scroll bars ---

QScrollBar* TQtPeer::BarOf(TScrollBarKind kind) const {
    const auto* const area = qobject_cast<const QAbstractScrollArea*>(FWidget.data());
    if (area == nullptr) return nullptr;
    return kind == sbVertical ? area->verticalScrollBar() : area->horizontalScrollBar();
}

void TQtPeer::ConnectScroll() {
    for (const TScrollBarKind kind : {sbHorizontal, sbVertical}) {
        QScrollBar* const bar = BarOf(kind);
        if (bar == nullptr) continue;
        const auto take = [this, kind] { TakeScroll(kind); };
        QObject::connect(bar, &QScrollBar::valueChanged, take);
        QObject::connect(bar, &QScrollBar::rangeChanged, take);
        QObject::connect(bar, &QScrollBar::sliderMoved, [this, kind](int position) {
            TakeOver([&] { dynamic_cast<TWinControl&>(FControl).TrackScrollByUser(kind, position); });
        });
    }
}

/// The range of the control holds the page, that of the toolkit the positions.
void TQtPeer::TakeScroll(TScrollBarKind kind) {
    const QScrollBar& bar = *BarOf(kind);
    TScrollInfo info;
    info.Mask = kScrollRange | kScrollPage | kScrollPosition;
    info.Min = bar.minimum();
    info.Max = bar.maximum() + bar.pageStep() - 1;
    info.Page = static_cast<std::uint32_t>(bar.pageStep());
    info.Position = bar.value();
    TakeOver([&] { dynamic_cast<TWinControl&>(FControl).SetScrollInfo(kind, info, false); });
}

void TQtPeer::UpdateScroll() {
    for (const TScrollBarKind kind : {sbHorizontal, sbVertical}) {
        TScrollInfo info;
        info.Mask = kScrollPosition;
        QScrollBar* const bar = BarOf(kind);
        if (bar == nullptr) continue;
        dynamic_cast<const TWinControl&>(FControl).GetScrollInfo(kind, info);
        bar->setValue(info.Position);
    }
}

// --- What the user does ---

void TQtPeer::Focused() {
    Report(caFocus, [&] {
        if (auto* const control = dynamic_cast<TWinControl*>(&FControl)) control->FocusByUser();
    });
}

void TQtPeer::Clicked() {
    if (TakesClicks()) Report(caState, [&] { FControl.ClickByUser(); });
}

// --- What the control asks for ---

std::uintptr_t TQtPeer::GetHandle() {
    return reinterpret_cast<std::uintptr_t>(FWidget.data());
}

TPoint TQtPeer::GetClientOrigin() {
    const QPoint origin = GetContainer().mapToGlobal(QPoint(0, 0));
    return {origin.x(), origin.y()};
}

TSize TQtPeer::GetClientSize() {
    return {FControl.GetWidth(), FControl.GetHeight()};
}

TRect TQtPeer::GetCellRect(std::int32_t, std::int32_t) {
    return {};
}

void TQtPeer::PaintTo(TCanvas& canvas, std::int32_t x, std::int32_t y) {
    QWidget& widget = GetContainer();
    QImage image(widget.size(), QImage::Format_RGB32);
    image.fill(widget.palette().color(QPalette::Window));
    widget.render(&image);
    for (int row = 0; row < image.height(); ++row) {
        const auto* const pixels = reinterpret_cast<const QRgb*>(image.constScanLine(row));
        for (int column = 0; column < image.width(); ++column) {
            const QRgb pixel = pixels[column];
            canvas.SetPixel(x + column, y + row,
                            static_cast<TColor>(qRed(pixel) | qGreen(pixel) << 8 | qBlue(pixel) << 16));
        }
    }
}

}  // namespace Varnholt
