// CQuillonCtrl: ControlStyle, an action in the form of a property that writes a whole look at once.
#include "control/QuillonCtrl.h"

namespace {

// The looks that share one order of writes: Default, Flat, XP Blue and XP Olive.
struct ClassicLook {
    SHORT nArrowType;
    OLE_COLOR clrBorder;
    SHORT nBorderType;
    OLE_COLOR clrDropBack, clrDropBackTo;
    SHORT nButtonBevel; // -1 leaves the bevel as it is
    SHORT nButtonFillType;
    OLE_COLOR clrDropFore;
    SHORT nButtonStyle, nDropWidth, nDisplayStyle;
    OLE_COLOR clrSpinBack, clrSpinBackTo;
    SHORT nSpinWidth;
    OLE_COLOR clrSpinFore, clrScrollBack, clrScrollBackTo, clrScrollFore;
    SHORT nScrollStyle;
};

constexpr OLE_COLOR kBtnFace = 0x8000000f, kBtnText = 0x80000012, kInactiveCaption = 0x80000003,
                    kInactiveCaptionText = 0x80000013, kCaptionText = 0x80000009;

constexpr ClassicLook kDefault{ArrowSmall, 0, BorderLowered, kBtnFace, 0xffffff, 1, FillSolid, kBtnText,
                               ButtonRegular, 16, DisplayRegular, kBtnFace, kBtnFace, 16, kBtnText,
                               kInactiveCaption, kInactiveCaptionText, kCaptionText, ScrollRegular};
constexpr ClassicLook kFlat{ArrowSmall, 0, BorderLowered, kBtnFace, 0xffffff, 1, FillSolid, kBtnText,
                            ButtonRegular, 16, DisplayFlat, kBtnFace, 0xffffff, 16, kBtnText,
                            kInactiveCaption, kInactiveCaptionText, kCaptionText, ScrollThin};
constexpr ClassicLook kXPBlue{ArrowLine1, 0xb99d7f, BorderRegular, 0xf3c6af, 0xfeeae1, -1, FillDiagonal, 0x85614d,
                              ButtonModern, 17, DisplayRegular, 0xf3c6af, 0xfeeae1, 16, 0x85614d,
                              0xf3c6af, 0xfeeae1, 0x85614d, ScrollModern};
constexpr ClassicLook kXPOlive{ArrowLine1, 0xa9d0c2, BorderRegular, 0x7da997, 0xbad7cb, -1, FillDiagonal, 0xffffff,
                               ButtonModern, 17, DisplayRegular, 0x7da997, 0xbad7cb, 16, 0xffffff,
                               0x7da997, 0xbad7cb, 0xffffff, ScrollModern};

void Changed(CQuillonCtrl& c)
{
    c.SetModifiedFlag(TRUE);
    c.InvalidateControl(nullptr, TRUE);
}

// Writes the members directly, without the setters' checks, each followed by a repaint request.
// The last write, ScrollStyle, is only marked modified, as its own setter does.
void WriteClassicLook(CQuillonCtrl& c, const ClassicLook& k)
{
    c.m_nArrowType = k.nArrowType; Changed(c);
    c.m_clrBorder = k.clrBorder; Changed(c);
    c.m_nBorderType = k.nBorderType;
    c.UpdateInsets();
    Changed(c);
    c.m_clrDropBack = k.clrDropBack; Changed(c);
    c.m_clrDropBackTo = k.clrDropBackTo; Changed(c);
    if (k.nButtonBevel >= 0) { c.m_nButtonBevel = k.nButtonBevel; Changed(c); }
    c.m_nButtonFillType = k.nButtonFillType; Changed(c);
    c.m_clrDropFore = k.clrDropFore; Changed(c);
    c.m_nButtonStyle = k.nButtonStyle; Changed(c);
    c.m_nDropWidth = k.nDropWidth; Changed(c);
    c.m_nDisplayStyle = k.nDisplayStyle; Changed(c);
    c.m_bReverseBorder = FALSE; Changed(c);
    c.m_clrSpinBack = k.clrSpinBack; Changed(c);
    c.m_clrSpinBackTo = k.clrSpinBackTo; Changed(c);
    c.m_nSpinWidth = k.nSpinWidth; Changed(c);
    c.m_clrSpinFore = k.clrSpinFore; Changed(c);
    c.m_clrScrollBack = k.clrScrollBack; Changed(c);
    c.m_clrScrollBackTo = k.clrScrollBackTo; Changed(c);
    c.m_clrScrollFore = k.clrScrollFore; Changed(c);
    c.m_nScrollStyle = k.nScrollStyle;
    c.SetModifiedFlag(TRUE);
}

} // namespace

// The property stores nothing: it always reads 0 and is not persisted.
SHORT CQuillonCtrl::GetControlStyle() { return 0; }

void CQuillonCtrl::SetControlStyle(SHORT nNewValue)
{
    switch (nNewValue) {
    case StyleDefault: ApplyStyleDefault(); break;
    case StyleFlat: ApplyStyleFlat(); break;
    case StyleXPBlue: ApplyStyleXPBlue(); break;
    case StyleXPOlive: ApplyStyleXPOlive(); break;
    case StyleVistaBlue: ApplyStyleVistaBlue(); break;
    default: break; // StyleControl and anything unknown change nothing
    }
}

void CQuillonCtrl::ApplyStyleDefault() { WriteClassicLook(*this, kDefault); }
void CQuillonCtrl::ApplyStyleFlat() { WriteClassicLook(*this, kFlat); }
void CQuillonCtrl::ApplyStyleXPBlue() { WriteClassicLook(*this, kXPBlue); }
void CQuillonCtrl::ApplyStyleXPOlive() { WriteClassicLook(*this, kXPOlive); }

void CQuillonCtrl::ApplyStyleVistaBlue()
{
    // Both buttons on, modern with a reversed frame; written as one group with no repaint between.
    m_nBorderType = BorderRegular;
    UpdateInsets();
    m_nArrowType = ArrowLine2;
    m_clrBorder = 0xcf9365;
    m_bSpinButton = TRUE;
    m_bDropButton = TRUE;
    m_nSpinWidth = 17;
    m_nDropWidth = 17;
    m_clrSpinBack = 0xffefe3;
    m_clrSpinBackTo = 0xffd1ad;
    m_clrSpinFore = 0x85614d;
    m_clrDropBack = 0xffefe3;
    m_clrDropBackTo = 0xffd1ad;
    m_clrDropFore = 0x85614d;
    m_nButtonFillType = FillVertEdge;
    m_nButtonStyle = ButtonModern;
    m_bReverseBorder = TRUE;
    // The scroll colours run the other way from the buttons'.
    m_clrScrollBackTo = 0xffefe3; StoreAndRepaint();
    m_clrScrollBack = 0xffd1ad; StoreAndRepaint();
    m_clrScrollFore = 0x85614d; StoreAndRepaint();
    m_nScrollStyle = ScrollModern; StoreAndRepaint();
}
