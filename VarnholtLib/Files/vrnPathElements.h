#pragma once

#include <cstdint>
#include <vector>

#include "Platform/Runtime/Exceptions.h"

/// A path as a list of its elements, with look-up and with searches for a file along the path. vrnPathArray.h
/// compares the three classes for paths.
///
///     const String folder = TPathElements::PathContainingFileFromEnd(u"C:\\data\\2012\\may.csv", u"station.ini", false);
///     // "C:\data\2012" or "C:\data" or "C:", the first of these folders that has the file
///
/// Elements count from 0; an index outside the list raises EListError.
///
/// Threads: an object serves one thread at a time.
namespace Varnholt {

/// The file "%s" could not be found
class VARNHOLT_EXPORT EFileNotFound : public Exception {
public:
    explicit EFileNotFound(StringView fileName);
};

class VARNHOLT_EXPORT TPathElements {
public:
    /// Splits a path at each backslash; white space around an element is removed. With stripFileElement the last element
    /// of the path of an existing file is left out.
    TPathElements(StringView path, bool stripFileElement);

    [[nodiscard]] std::int32_t GetCount() const noexcept {
        return static_cast<std::int32_t>(FStrings.size());
    }
    [[nodiscard]] const String& GetElement(std::int32_t index) const;
    void SetElement(std::int32_t index, StringView element);

    /// The index of the first or the last element equal to the text, without regard to the case of ASCII letters;
    /// -1 if there is none.
    [[nodiscard]] std::int32_t IndexFromStart(StringView element) const;
    [[nodiscard]] std::int32_t IndexFromEnd(StringView element) const;
    /// The elements from 0 to the index with a backslash between them; empty below 0.
    [[nodiscard]] String ToStringUpToIndex(std::int32_t upToIndex) const;
    [[nodiscard]] String ToString() const { return ToStringUpToIndex(GetCount() - 1); }

    /// Whether the folder of the elements from 0 to the index has the file.
    [[nodiscard]] bool PathContainsFile(std::int32_t index, StringView fileName) const;
    /// The same; the result path is that of the file or, without incFileName, of the folder, and empty if it has not.
    [[nodiscard]] bool PathContainsFile(std::int32_t index, StringView fileName, bool incFileName,
                                        String& resultPath) const;
    /// The result path for the last or the first element whose folder has the file. Raises EFileNotFound.
    [[nodiscard]] String PathContainingFileFromEnd(StringView fileName, bool incFileName) const;
    [[nodiscard]] String PathContainingFileFromStart(StringView fileName, bool incFileName) const;
    /// The same for a path; of the path of an existing file, for its folder.
    [[nodiscard]] static String PathContainingFileFromEnd(StringView path, StringView fileName,
                                                          bool incFileName);
    [[nodiscard]] static String PathContainingFileFromStart(StringView path, StringView fileName,
                                                            bool incFileName);
    /// The same without raising: false, with an empty result path, after any failure.
    [[nodiscard]] bool TryPathContainingFileFromEnd(StringView fileName, bool incFileName,
                                                    String& resultPath) const;
    [[nodiscard]] bool TryPathContainingFileFromStart(StringView fileName, bool incFileName,
                                                      String& resultPath) const;

private:
    std::vector<String> FStrings;
};

}  // namespace Varnholt
