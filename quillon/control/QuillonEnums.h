// The enumerations of the type library, with the values the properties take.
#pragma once

enum enumBorder { BorderRegular = 0, BorderNone = 1, BorderRaised = 2, BorderLowered = 3 };
enum enumArrowType { ArrowSmall = 0, ArrowLarge = 1, ArrowLine1 = 2, ArrowLine2 = 3 };
enum enumCaseType { CaseNone = 0, CaseUpper = 1, CaseLower = 2 };
enum enumAuto { AutoNone = 0, AutoAppend = 1, AutoSuggest = 2, AutoBoth = 3 };
enum enumScrollStyle { ScrollRegular = 0, ScrollThin = 1, ScrollModern = 2 };
enum enumAlignment { AlignLeft = 0, AlignRight = 1, AlignCenter = 2 };
enum enumDisplay { DisplayRegular = 0, DisplayFlat = 1 };
enum enumFillType {
    FillSolid = 0, FillHorizontal = 1, FillVertical = 2, FillDiagonal = 3, FillRevDiag = 4, FillHorzBump = 5,
    FillVertBump = 6, FillDiamond = 7, FillPyramid = 8, FillCircle = 9, FillEllipse = 10, FillHorzEdge = 11,
    FillVertEdge = 12, FillVertEdge2 = 13,
};
enum enumButtonStyle { ButtonRegular = 0, ButtonModern = 1 };
enum enumControlStyle { StyleControl = 0, StyleDefault = 1, StyleFlat = 2, StyleXPBlue = 3, StyleXPOlive = 4, StyleVistaBlue = 5 };
enum enumProperties { None = 0, Display = 1 };

// Event dispids of _DQuillonEvents.
enum {
    eventidClickDrop = 1, eventidClickSpin = 2, eventidChange = 3, eventidMouseOn = 4, eventidCtrlError = 5,
    eventidFirstDraw = 6,
};

// Error codes raised through CtrlError.
enum {
    errXmlFile = 1000, errXmlNodes = 1001, errXmlText = 1002, errXmlDocument = 1003, errXmlWrite = 1004,
    errListFull = 32002, errBadIndex = 32003,
};

constexpr int kMaxItems = 32760;
