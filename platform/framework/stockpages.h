// The platform's stock property pages for colours, fonts and pictures (CLSID_StockColorPage,
// CLSID_StockFontPage, CLSID_StockPicturePage), served to COM as the system's own pages are.
#pragma once

// Makes the stock pages' class objects known to COM (once).
void RegisterStockPropertyPages();
