#include "Tools/varnholt/PictureOption.h"

#include <CLI/CLI.hpp>
#include <charconv>
#include <optional>

#include "Platform/Drawing/Picture.h"
#include "Platform/Runtime/Exceptions.h"
#include "Platform/Runtime/Files.h"
#include "Platform/Runtime/Format.h"

namespace Varnholt::Tool {
namespace {

std::optional<std::int32_t> ReadLength(std::string_view text) {
    std::int32_t length = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), length);
    const bool isWhole = error == std::errc() && end == text.data() + text.size();
    return isWhole && length >= 100 && length <= 10000 ? std::optional(length) : std::nullopt;
}

}  // namespace

void CheckPicture(const std::string& option, StringView fileName, StringView input) {
    if (!PictureFormatOf(fileName))
        throw CLI::ValidationError(option, "takes a file name that ends in .svg, .png or .pdf");
    if (IsSameFile(input == u"-" ? StringView(u"/dev/stdin") : input, fileName))
        throw Exception(Format(u"Cannot write file \"%s\": It is also the input", {fileName}));
}

TSize ReadPictureSize(const std::string& option, const std::string& text) {
    const std::size_t cross = std::min(text.find('x'), text.size());
    const auto width = ReadLength(std::string_view(text).substr(0, cross));
    const auto height = ReadLength(std::string_view(text).substr(std::min(cross + 1, text.size())));
    if (!width || !height)
        throw CLI::ValidationError(option, "\"" + text + "\" is not a size from 100x100 to 10000x10000");
    return {*width, *height};
}

}  // namespace Varnholt::Tool
