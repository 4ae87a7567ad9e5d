#pragma once

#include <QString>

#include "Platform/Runtime/Paths.h"
#include "Platform/Runtime/Types.h"

namespace Varnholt {

/// The same UTF-16 code units.
[[nodiscard]] inline QString ToQt(StringView text) {
    return QString(reinterpret_cast<const QChar*>(text.data()), static_cast<qsizetype>(text.size()));
}

[[nodiscard]] inline String FromQt(const QString& text) {
    return {reinterpret_cast<const Char*>(text.utf16()), static_cast<std::size_t>(text.size())};
}

/// The native form of a library path; empty if it has none.
[[nodiscard]] inline QString PathToQt(StringView path) {
    String reason;
    return QString::fromStdString(TryToNativePath(path, reason).value_or(std::string()));
}

[[nodiscard]] inline String PathFromQt(const QString& path) {
    return FromNativePath(path.toStdString());
}

/// The text of a caption for a place where Qt underlines no letters: without the mark before such a letter.
[[nodiscard]] QString PlainCaption(StringView caption);

}  // namespace Varnholt
