#include <gtest/gtest.h>

#include "Platform/Controls/Clipboard.h"
#include "Platform/System/Platform.h"
#include "Tests/Support/Raised.h"
#include "VarnholtLib/UI/vrnClipboardEnvelope.h"
#include "VarnholtLib/UI/vrnControlStringConversion.h"

namespace Varnholt::Test {
namespace {

struct TEmptyClipboard final : IClipboard {
    bool HasText() override { return false; }
    String GetText() override { return u"$ENVELOPE:a:b"; }
    void SetText(StringView) override {}
};

TEST(ClipboardEnvelope, CarriesTypedTexts) {
    const std::tuple<StringView, StringView, StringView> cases[] = {
        {u"$ENVELOPE:a:b:c", u"a", u"b:c"}, {u"$ENVELOPE:a:", u"a", u""}, {u"$ENVELOPE:a", u"a", u""},
        {u"$ENVELOPE:", u"", u""},          {u"$ENVELOPE::b", u"", u"b"}, {u"$ENVELOPE:::", u"", u":"}};
    for (const auto& [envelope, typeName, text] : cases) {
        String one(envelope), other;
        TClipboardEnvelope::ParseEnvelope(one, one, other);  // the result may replace the envelope
        EXPECT_TRUE(one == typeName && other == text) << ToUtf8(envelope);
        EXPECT_EQ(TClipboardEnvelope::GetEnvelopeText(envelope), text);
        EXPECT_EQ(TClipboardEnvelope::GetEnvelopeTypeName(envelope), typeName);
    }
    TClipboardEnvelope::SetText(u"Rows", u"1:2");
    EXPECT_EQ(Clipboard().GetAsText(), u"$ENVELOPE:Rows:1:2");
    EXPECT_EQ(TClipboardEnvelope::GetText(u"Rows"), u"1:2");
    EXPECT_TRUE(TClipboardEnvelope::Contains(u"Rows") && !TClipboardEnvelope::Contains(u"rows"));
    const auto get = [] { return TClipboardEnvelope::GetText(u"a"); };
    EXPECT_EQ(Raised<Exception>(get), u"Clipboard does not contain correct format");
    for (const StringView foreign : {u"$envelope:a:b", u"", u"x$ENVELOPE:a:b"}) {
        Clipboard().SetAsText(foreign);
        EXPECT_FALSE(TClipboardEnvelope::Contains(u"a"));
        EXPECT_EQ(Raised<Exception>(get), u"Data not in required format") << ToUtf8(foreign);
    }
    const TPlatformScope scope;
    Platform().Clipboard = std::make_shared<TEmptyClipboard>();
    EXPECT_EQ(Raised<Exception>(get), u"Clipboard does not contain correct format");
    EXPECT_FALSE(TClipboardEnvelope::Contains(u"a"));
}

TEST(ControlStringConversion, SetsAndRectanglesGoBothWays) {
    EXPECT_EQ(FontStylesToString({fsStrikeOut, fsBold, fsUnderline, fsItalic}), u"BIUS");
    EXPECT_EQ(AnchorsToString({akBottom, akRight, akTop, akLeft}), u"LTRB");
    EXPECT_EQ(AnchorsToString({}), u"");
    EXPECT_EQ(StringToFontStyles(u"xSbB B"), TFontStyles({fsBold, fsStrikeOut}));
    EXPECT_EQ(StringToAnchors(u"BL"), TAnchors({akLeft, akBottom}));
    EXPECT_EQ(SizeToString({-1, 2147483647}), u"-1,2147483647");
    EXPECT_EQ(StringToSize(u"-1,2147483647"), (TSize{-1, 2147483647}));
    EXPECT_EQ(RectToString({1, -2, 3, 4}), u"1,-2,3,4");
    EXPECT_EQ(StringToRect(u"1,-2,3,4"), (TRect{1, -2, 3, 4}));
    for (const StringView text : {u"", u"1", u"1,2,3", u"1,2,3,4,5"}) {
        const StringView message = u"String is not a valid Size string";
        ExpectRaised<EConvertError>({{[&] { static_cast<void>(StringToSize(text)); }, message},
                                     {[&] { static_cast<void>(StringToRect(text)); }, message}});
    }
    EXPECT_EQ(Raised<EConvertError>([] { return StringToSize(u"1,x"); }),
              u"'x' is not a valid integer value");
}

}  // namespace
}  // namespace Varnholt::Test
