// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/text/PrintableText.h"

#include "tests/support/Testing.h"

using namespace corvane;

TEST(PrintableText, NothingSteersTheTerminalAndAFieldCanBeReadBack)
{
    const struct
    {
        QString text;
        const char16_t *field;
        const char16_t *message;
    } rows[] = {
        {u"25.0 \u00b0C \u00fc"_s, u"25.0 \u00b0C \u00fc", u"25.0 \u00b0C \u00fc"},
        {u"a\tb\r\nc\rd\\e"_s, u"a\\tb\\r\\nc\\rd\\\\e", u"a\tb\nc\\x0dd\\e"},
        {u"\x1b]0;x\a\x7f\u009b"_s, u"\\x1b]0;x\\x07\\x7f\\x9b", u"\\x1b]0;x\\x07\\x7f\\x9b"},
        {u"\u202egnp\u2028"_s, u"\\u202egnp\\u2028", u"\\u202egnp\\u2028"},
        {u"\U0001f321"_s + QChar(0xd83c), u"\U0001f321\\ud83c", u"\U0001f321\\ud83c"},
    };
    for (const auto &[text, field, message] : rows) {
        EXPECT_EQ(printableText::field(text), QString::fromUtf16(field));
        EXPECT_EQ(printableText::message(text), QString::fromUtf16(message));
    }
}
