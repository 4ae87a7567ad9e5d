#include "VarnholtLib/Files/vrnNamedPoint.h"

#include "Platform/Runtime/Files.h"
#include "Platform/Runtime/Format.h"
#include "Platform/Runtime/Numbers.h"
#include "VarnholtBaseLib/CsvReader.h"

namespace Varnholt {

TNamedPointList::TNamedPointList() : TNamedPointList(u"NAME", u"LON", u"LAT") {}

TNamedPointList::TNamedPointList(StringView nameColName, StringView xColName, StringView yColName)
    : FXColName(xColName), FYColName(yColName), FNameColName(nameColName) {}

void TNamedPointList::LoadFromFile(StringView fileName) {
    Clear();
    const TCSVReader reader = TCSVReader::FromFile(fileName, u',');
    TIntegerArray columns;
    reader.GetColumnIndexes({FNameColName, FXColName, FYColName}, columns);
    const auto number = [](const String& text) { return static_cast<float>(StrToFloat(text)); };
    for (std::size_t i = 1; i < reader.GetRows().size(); ++i) {
        const TStringArray& row = reader.GetRows()[i];
        Add({row[columns[0]], number(row[columns[1]]), number(row[columns[2]])});
    }
}

void TNamedPointList::SaveToFile(StringView fileName) const {
    std::string text = ToUtf8(Format(u"\"%s\",\"%s\",\"%s\"\r\n", {FNameColName, FXColName, FYColName}));
    for (const TNamedPoint& point : *this)
        text += ToUtf8(Format(u"\"%s\",\"%.4f\",\"%.4f\"\r\n", {point.Name, point.X, point.Y}));
    WriteFileInOneGo(fileName, text);
}

}  // namespace Varnholt
