#include "Platform/Drawing/Picture.h"

#include <cairo-pdf.h>
#include <cairo-svg.h>

#include <algorithm>

#include "Platform/Drawing/CairoTargetPrivate.h"
#include "Platform/Runtime/DraftFile.h"
#include "Platform/Runtime/Exceptions.h"
#include "Platform/Runtime/Format.h"
#include "Platform/Runtime/Text.h"

namespace Varnholt {
namespace {

constexpr double kPointsPerPixel = 72.0 / 96;

cairo_status_t Append(void* target, const unsigned char* bytes, unsigned count) noexcept {
    try {
        static_cast<std::string*>(target)->append(reinterpret_cast<const char*>(bytes), count);
        return CAIRO_STATUS_SUCCESS;
    } catch (const std::exception&) {
        return CAIRO_STATUS_NO_MEMORY;
    }
}

TCairoSurface MakeSurface(TPictureFormat format, TSize size, std::string& bytes) {
    if (format == pictPng)
        return TCairoSurface(cairo_image_surface_create(CAIRO_FORMAT_RGB24, size.Width, size.Height));
    if (format == pictPdf) {
        TCairoSurface page(cairo_pdf_surface_create_for_stream(Append, &bytes, size.Width * kPointsPerPixel,
                                                               size.Height * kPointsPerPixel));
        cairo_surface_set_device_scale(page.get(), kPointsPerPixel, kPointsPerPixel);
        return page;
    }
    TCairoSurface page(cairo_svg_surface_create_for_stream(Append, &bytes, size.Width, size.Height));
    cairo_svg_surface_set_document_unit(page.get(), CAIRO_SVG_UNIT_PX);
    return page;
}

/// Cairo writes six decimals, and half of an SVG file is digits that nobody can see: two are kept after the XML
/// declaration.
std::string WithShortNumbers(std::string_view svg) {
    constexpr std::size_t kDecimals = 2;
    const auto isDigit = [&](std::size_t i) { return i < svg.size() && svg[i] >= '0' && svg[i] <= '9'; };
    std::string text;
    text.reserve(svg.size());
    const std::size_t declaration = svg.find('\n');
    for (std::size_t i = 0; i < svg.size();) {
        if (i < declaration || svg[i] != '.' || !isDigit(i + 1)) {
            text += svg[i++];
            continue;
        }
        std::size_t end = ++i;
        while (isDigit(end)) ++end;
        std::string_view decimals = svg.substr(i, std::min(end - i, kDecimals));
        decimals = decimals.substr(0, decimals.find_last_not_of('0') + 1);
        if (!decimals.empty()) text.append(".").append(decimals);
        i = end;
    }
    return text;
}

}  // namespace

std::optional<TPictureFormat> PictureFormatOf(StringView fileName) {
    const StringView extension = fileName.substr(fileName.size() - std::min<std::size_t>(fileName.size(), 4));
    if (SameText(extension, u".png")) return pictPng;
    if (SameText(extension, u".svg")) return pictSvg;
    if (SameText(extension, u".pdf")) return pictPdf;
    return std::nullopt;
}

std::string DrawPicture(TPictureFormat format, TSize size, const std::function<void(TCanvas&)>& draw) {
    constexpr std::int32_t kMaxSize = 32767;
    if (size.Width < 1 || size.Height < 1 || size.Width > kMaxSize || size.Height > kMaxSize)
        throw EArgumentException(
            Format(u"Size %d x %d of a picture is not between 1 and 32767", {size.Width, size.Height}));
    std::string bytes;
    const TCairoSurface surface = MakeSurface(format, size, bytes);
    CheckCairo(cairo_surface_status(surface.get()));
    {
        TCairoTarget target(*surface);
        target.FillRect({0, 0, size.Width, size.Height}, {});
        TCanvas canvas(target);
        draw(canvas);
        target.Check();
    }
    if (format == pictPng) CheckCairo(cairo_surface_write_to_png_stream(surface.get(), Append, &bytes));
    cairo_surface_finish(surface.get());
    CheckCairo(cairo_surface_status(surface.get()));
    return format == pictSvg ? WithShortNumbers(bytes) : bytes;
}

void DrawToFile(StringView fileName, TSize size, const std::function<void(TCanvas&)>& draw) {
    const std::optional<TPictureFormat> format = PictureFormatOf(fileName);
    if (!format) throw EArgumentException(Format(u"The format of picture \"%s\" is not known", {fileName}));
    const std::string bytes = DrawPicture(*format, size, draw);
    TDraftFileStream file(fileName);
    file.WriteBuffer(BytesOf(bytes));
    file.Commit();
}

}  // namespace Varnholt
