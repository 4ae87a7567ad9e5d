#pragma once

#include <cstdint>
#include <vector>

#include "Platform/Runtime/Encoding.h"
#include "Platform/Runtime/Types.h"

/// A list of lines, which is built in memory, searched, and written to a file in one step.
///
///     TStringList lines;
///     lines.Add(u"Month,Rain");
///     lines.Add(u"1,83.5");
///     lines.SaveToFile(u"C:\\data\\rain.csv");
///
/// Indices count from 0. An index outside the list raises EListError ("List index out of bounds (%d)").
///
/// Uses Files.h and Encoding.h. Threads: a list may be used by one thread at a time.
namespace Varnholt {

class VARNHOLT_EXPORT TStringList {
public:
    using value_type = String;
    using const_iterator = std::vector<String>::const_iterator;

    /// Adds a line at the end and returns its index.
    std::int32_t Add(StringView line);
    /// Inserts a line before the one at the index, or at the end if the index is the count.
    void Insert(std::int32_t index, StringView line);
    void Delete(std::int32_t index);
    void Clear() noexcept { FLines.clear(); }

    [[nodiscard]] std::int32_t GetCount() const noexcept { return static_cast<std::int32_t>(FLines.size()); }
    [[nodiscard]] const String& operator[](std::int32_t index) const;
    [[nodiscard]] String& operator[](std::int32_t index);
    [[nodiscard]] const_iterator begin() const noexcept { return FLines.begin(); }
    [[nodiscard]] const_iterator end() const noexcept { return FLines.end(); }

    /// Index of the first line equal to the text, or -1.
    [[nodiscard]] std::int32_t IndexOf(StringView text) const;
    /// Sorts the lines by their code units; equal ones keep their order.
    void Sort();

    /// Whether IndexOf and Sort distinguish upper-case from lower-case letters. False at first: ASCII letters
    /// are then equal in either case.
    [[nodiscard]] bool GetCaseSensitive() const noexcept { return FCaseSensitive; }
    void SetCaseSensitive(bool caseSensitive) noexcept { FCaseSensitive = caseSensitive; }

    /// All lines, with CR LF after each.
    [[nodiscard]] String GetText() const;
    /// Replaces the lines by those of the text. CR, LF and CR LF end a line; the last line needs no end.
    void SetText(StringView text);

    /// Replaces the lines by those of the file. A preamble decides the encoding, otherwise it is the one
    /// given. Raises EFOpenError or EReadError, and then the list is unchanged.
    void LoadFromFile(StringView path, const TEncoding& encoding = TEncoding::Default());
    /// Writes the text after the encoding's preamble, if it has one, as WriteFileInOneGo does; raises as
    /// that.
    void SaveToFile(StringView path, const TEncoding& encoding = TEncoding::Default()) const;

private:
    void CheckRoom() const;

    std::vector<String> FLines;
    bool FCaseSensitive = false;
};

}  // namespace Varnholt
