#pragma once

#include "Platform/Runtime/StringList.h"

/// A path as a list of its elements: the simplest of three classes, which differ in details.
///
///     TPathArray path(u"C:\\a\\b/c");     // C:, a, b, c
///     path.Build(1);                     // "C:\a\"
///
/// |                       | TPathArray           | TPathBreadcrumb      | TPathElements        |
/// |-----------------------|----------------------|----------------------|----------------------|
/// | separators            | backslash and slash  | backslash            | backslash            |
/// | one at the end        | skipped              | an empty element     | an empty element     |
/// | blanks around elements| kept                 | kept                 | removed              |
/// | a built path          | ends in a backslash  | ends in a backslash  | does not end in one  |
/// | an index too high     | raises EListError    | is the last element  | raises EListError    |
/// | searches for files    | no                   | yes                  | yes                  |
///
/// Elements count from 0; an index outside the list raises EListError unless the table says otherwise. Elements are
/// compared without regard to the case of ASCII letters.
///
/// Threads: a list serves one thread at a time.
namespace Varnholt {

/// The elements of a path, first to last, and what a list of strings offers.
class VARNHOLT_EXPORT TPathArray : public TStringList {
public:
    /// Splits a path. An empty path has no elements; one separator at its end is skipped; an element is empty between two
    /// separators and before one at the beginning.
    explicit TPathArray(StringView path);

    /// Inserts an element before the first.
    void AddElement(StringView element) { Insert(0, element); }
    /// The elements from first to last, each with a backslash after it; empty if last is below first.
    [[nodiscard]] String Build() const { return Build(GetCount() - 1); }
    [[nodiscard]] String Build(std::int32_t last) const { return Build(0, last); }
    [[nodiscard]] String Build(std::int32_t first, std::int32_t last) const;
    /// Whether the character is a backslash or a slash.
    [[nodiscard]] static bool IsPathSeperator(Char c) noexcept { return c == u'\\' || c == u'/'; }
};

}  // namespace Varnholt
