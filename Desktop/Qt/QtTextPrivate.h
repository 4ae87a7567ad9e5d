#pragma once

#include <QString>

#include "Platform/Runtime/Types.h"

namespace Varnholt {

/// The same UTF-16 code units.
[[nodiscard]] inline QString ToQt(StringView text) {
    return QString(reinterpret_cast<const QChar*>(text.data()), static_cast<qsizetype>(text.size()));
}

[[nodiscard]] inline String FromQt(const QString& text) {
    return {reinterpret_cast<const Char*>(text.utf16()), static_cast<std::size_t>(text.size())};
}

/// The text of a caption for a place where Qt underlines no letters: without the mark before such a letter.
[[nodiscard]] QString PlainCaption(StringView caption);

}  // namespace Varnholt
