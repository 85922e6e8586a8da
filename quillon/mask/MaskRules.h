// The mask language on plain strings: placeholders, what each takes, and the shaping of text.
#pragma once
#include "base/cstring.h"

namespace mask {

// "!", "#", "9", "A", "N" and "X"; every other character is a literal.
bool IsPlaceholder(TCHAR k);
// Does placeholder k take the character c?
bool Accepts(TCHAR k, TCHAR c);
// Case conversion of CaseType (1 upper, 2 lower) on the ASCII letters only.
TCHAR ApplyCase(SHORT nCaseType, TCHAR ch);
// The form in which placeholder k stores an accepted c.
TCHAR StoredForm(TCHAR k, TCHAR c, SHORT nCaseType);
// The blank template: a blank for each placeholder, the mask's own character elsewhere.
CString BuildLiteral(const CString& mask);
// Raw text shaped by the mask: placeholders consume accepted characters, refused ones are dropped,
// literals are written in place; the result has the mask's length (the text itself with no mask).
CString ApplyTextToMask(const CString& mask, const CString& text, SHORT nCaseType);
// The characters at placeholder positions and past the mask's end.
CString StripLiterals(const CString& mask, const CString& text);

} // namespace mask
