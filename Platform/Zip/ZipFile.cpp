#include "Platform/Zip/ZipFile.h"

#include <zip.h>

#include "Platform/Runtime/Format.h"
#include "Platform/Runtime/Paths.h"

namespace Varnholt {

struct TZipFile::TImpl {
    struct TDiscard {
        void operator()(zip_t* zip) const noexcept { zip_discard(zip); }
    };
    std::unique_ptr<zip_t, TDiscard> Zip;
};

TZipFile::TZipFile(StringView path) : FImpl(std::make_unique<TImpl>()) {
    int code = 0;
    FImpl->Zip.reset(zip_open(ToNativePath(path).c_str(), ZIP_RDONLY, &code));
    if (FImpl->Zip) return;
    zip_error_t error;
    zip_error_init_with_code(&error, code);
    const String reason = FromUtf8(zip_error_strerror(&error));
    zip_error_fini(&error);
    throw EZipException(Format(u"%s: %s", {path, reason}));
}

TZipFile::~TZipFile() = default;

std::int32_t TZipFile::GetFileCount() const {
    return static_cast<std::int32_t>(zip_get_num_entries(FImpl->Zip.get(), 0));
}

std::int32_t TZipFile::IndexOf(StringView fileName) const {
    if (fileName.find(u'\0') != StringView::npos) return -1;
    const std::string name = ToUtf8(fileName);
    return static_cast<std::int32_t>(zip_name_locate(FImpl->Zip.get(), name.c_str(), ZIP_FL_ENC_GUESS));
}

}  // namespace Varnholt
