// A property bag saved as text: one "Key = Value" line per written property, in writing order.
//
// Values: numbers in decimal, strings in double quotes with \" \\ \n \r \t and \uXXXX escapes,
// objects as {font} or {picture} followed by the hex of their persisted stream, Nothing for none.
// A key written twice keeps both lines (the stock and the own BackColor, say); reads of one key
// take its lines in order, so that a load reads back what a save wrote.
#pragma once
#include "ocidl.h"

// E_INVALIDARG for a damaged text (a line without " = ", a string or object Write would not
// write), with "line N: reason" in *pError when given.
HRESULT CreateTextPropertyBag(const CString& text, IPropertyBag** ppBag, CString* pError = nullptr);
// The bag's lines as text, each ending in a newline.
CString GetPropertyBagText(IPropertyBag* pBag);
