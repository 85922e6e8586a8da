// The mask language as plain functions: acceptance, stored forms, template and shaping.
#include <gtest/gtest.h>
#include "Harness.h"
#include "mask/MaskRules.h"

namespace {

struct ShapeCase { const char16_t* mask; const char16_t* text; SHORT caseType; const char16_t* expected; };

const ShapeCase kShapeCases[] = {
    {u"##-##", u"1234", 0, u"12-34"},
    {u"##-##", u"12", 0, u"12-  "},
    {u"##-##", u"12-34", 0, u"12--3"},      // "#" takes "-": a typed literal is not matched to the mask's
    {u"(###)", u"", 0, u"(   )"},
    {u"AA", u"1a2b", 0, u"ab"},              // refused characters are dropped, the mask position stays
    {u"!!", u"ab", 2, u"AB"},                // "!" raises letters whatever CaseType says
    {u"XX", u"a1", 1, u"A1"},
    {u"NN", u"Zz", 2, u"zz"},
    {u"99", u" 5", 0, u"5 "},                // "9" refuses the blank that "#" takes
    {u"#.#", u"1x2", 0, u"1.2"},
    {u"##--", u"1", 0, u"1 --"},             // tail literals written when the text runs out
    {u"##", u"12345", 0, u"12"},             // text past the mask's end is discarded
    {u"", u"raw Text", 1, u"raw Text"},      // no mask: verbatim, no case conversion
    {u"anx", u"q", 0, u"anx"},               // lower-case letters are literals
};

} // namespace

TEST(MaskRules, ShapesRawTextByTheMask)
{
    for (const auto& c : kShapeCases)
        EXPECT_EQ(mask::ApplyTextToMask(c.mask, c.text, c.caseType), CString(c.expected))
            << ToUtf8(CString(c.mask)) << " <- " << ToUtf8(CString(c.text));
}

TEST(MaskRules, AcceptanceOfEachPlaceholder)
{
    struct { char16_t k; const char16_t* takes; const char16_t* refuses; } table[] = {
        {u'#', u"09- ", u"a+.A"},
        {u'9', u"09-", u" a+"},
        {u'A', u"azAZ", u"09 -@[`{"},
        {u'N', u"azAZ09", u" -_"},
        {u'X', u" -a\u00e9", u""},
        {u'!', u" -a\u00e9", u""},
    };
    for (const auto& row : table) {
        for (const char16_t* p = row.takes; *p; ++p) EXPECT_TRUE(mask::Accepts(row.k, *p)) << char(row.k) << " " << int(*p);
        for (const char16_t* p = row.refuses; *p; ++p) EXPECT_FALSE(mask::Accepts(row.k, *p)) << char(row.k) << " " << int(*p);
    }
    for (char16_t lit : {u'a', u'n', u'x', u'-', u'(', u'8'}) EXPECT_FALSE(mask::IsPlaceholder(lit));
}

TEST(MaskRules, CaseAppliesToAsciiLettersOnly)
{
    EXPECT_EQ(mask::ApplyCase(1, u'q'), u'Q');
    EXPECT_EQ(mask::ApplyCase(2, u'Q'), u'q');
    EXPECT_EQ(mask::ApplyCase(1, u'\u00e9'), u'\u00e9');
    EXPECT_EQ(mask::ApplyCase(0, u'q'), u'q');
    EXPECT_EQ(mask::ApplyCase(3, u'q'), u'q');
    EXPECT_EQ(mask::StoredForm(u'#', u'5', 1), u'5');
    EXPECT_EQ(mask::StoredForm(u'!', u'\u00e9', 0), u'\u00e9') << "'!' raises ASCII letters only";
}

TEST(MaskRules, TemplateAndLiteralStripping)
{
    EXPECT_EQ(mask::BuildLiteral(u"(###) ###-####"), CString(u"(   )    -    "));
    EXPECT_EQ(mask::BuildLiteral(u""), CString(u""));
    EXPECT_EQ(mask::StripLiterals(u"##-##", u"12-  "), CString(u"12  "));
    EXPECT_EQ(mask::StripLiterals(u"##-##", u"12-34xyz"), CString(u"1234xyz")) << "text past the mask stays";
    EXPECT_EQ(mask::StripLiterals(u"", u"abc"), CString(u"abc"));
}
