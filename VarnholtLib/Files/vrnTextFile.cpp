#include "VarnholtLib/Files/vrnTextFile.h"

namespace Varnholt {
namespace {

std::size_t indentLevel = 0;  // of all writers

}  // namespace

void TTextFileWriter::Indent() noexcept {
    ++indentLevel;
}

void TTextFileWriter::UnIndent() noexcept {
    if (indentLevel > 0) --indentLevel;
}

String TTextFileWriter::GetIndentString() {
    return String(2 * indentLevel, u' ');
}

void TTextFileWriter::WriteLine(StringView line) {
    FWriter.Write(GetIndentString());
    FWriter.WriteLine(line);
}

void TTextFileWriter::WriteLineFmt(StringView format, std::initializer_list<TFormatArg> values) {
    WriteLine(Format(format, values));
}

void TTextFileWriter::WriteFmt(StringView format, std::initializer_list<TFormatArg> values) {
    Write(Format(format, values));
}

}  // namespace Varnholt
