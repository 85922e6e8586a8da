// The US keyboard layout behind TranslateMessage and VkKeyScan: which character a key makes.
#include "inputapi.h"
#include "wndobj.h"

namespace {

struct OemKey { UINT vk; char plain; char shifted; };
constexpr OemKey kOem[] = {
    {VK_OEM_1, ';', ':'}, {VK_OEM_PLUS, '=', '+'}, {VK_OEM_COMMA, ',', '<'}, {VK_OEM_MINUS, '-', '_'},
    {VK_OEM_PERIOD, '.', '>'}, {VK_OEM_2, '/', '?'}, {VK_OEM_3, '`', '~'}, {VK_OEM_4, '[', '{'},
    {VK_OEM_5, '\\', '|'}, {VK_OEM_6, ']', '}'}, {VK_OEM_7, '\'', '"'}, {VK_SPACE, ' ', ' '},
};
constexpr char kShiftedDigits[] = ")!@#$%^&*(";

struct PadKey { UINT vk; char ch; };
constexpr PadKey kPad[] = {
    {VK_MULTIPLY, '*'}, {VK_ADD, '+'}, {VK_SUBTRACT, '-'}, {VK_DECIMAL, '.'}, {VK_DIVIDE, '/'},
};

} // namespace

namespace user {

// Alt and AltGr combinations make no character here.
WCHAR TranslateKey(UINT vk, const BYTE* keys)
{
    bool shift = keys[VK_SHIFT] & 0x80, ctrl = keys[VK_CONTROL] & 0x80, caps = keys[VK_CAPITAL] & 0x01;
    if (keys[VK_MENU] & 0x80) return 0;
    switch (vk) {
    case VK_BACK: return ctrl ? 0x7F : 8;
    case VK_TAB: return ctrl ? 0 : 9;
    case VK_RETURN: return ctrl ? 10 : 13;
    case VK_ESCAPE: return 27;
    case VK_CANCEL: return ctrl ? 3 : 0;
    default: break;
    }
    if (vk >= 'A' && vk <= 'Z') {
        if (ctrl) return (WCHAR)(vk - 'A' + 1);
        return (WCHAR)((shift != caps) ? vk : vk + 32);
    }
    if (ctrl) return vk == VK_SPACE ? ' ' : 0;
    if (vk >= '0' && vk <= '9') return (WCHAR)(shift ? kShiftedDigits[vk - '0'] : vk);
    if (vk >= VK_NUMPAD0 && vk <= VK_NUMPAD9) return (WCHAR)('0' + vk - VK_NUMPAD0);
    for (const PadKey& p : kPad)
        if (p.vk == vk) return (WCHAR)p.ch;
    for (const OemKey& o : kOem)
        if (o.vk == vk) return (WCHAR)(shift ? o.shifted : o.plain);
    return 0;
}

} // namespace user

SHORT VkKeyScan(WCHAR ch)
{
    switch (ch) {
    case 8: return VK_BACK;
    case 9: return VK_TAB;
    case 13: return VK_RETURN;
    case 27: return VK_ESCAPE;
    case 10: return 0x200 | VK_RETURN;
    default: break;
    }
    if (ch >= 'a' && ch <= 'z') return (SHORT)(ch - 32);
    if (ch >= 'A' && ch <= 'Z') return (SHORT)(0x100 | ch);
    if (ch >= 1 && ch <= 26) return (SHORT)(0x200 | ('A' + ch - 1));
    if (ch >= '0' && ch <= '9') return (SHORT)ch;
    for (int d = 0; d < 10; ++d)
        if (ch == (WCHAR)kShiftedDigits[d]) return (SHORT)(0x100 | ('0' + d));
    for (const OemKey& o : kOem) {
        if (ch == (WCHAR)o.plain) return (SHORT)o.vk;
        if (ch == (WCHAR)o.shifted) return (SHORT)(0x100 | o.vk);
    }
    return -1;
}
