// The module's resource identifiers.
#pragma once

#define IDS_QUILLON 1              // the control's type name
#define IDS_QUILLON_PPG 2          // the General page's type name
#define IDS_MORE_PPG 3             // the More page's type name
#define IDS_MORE_PPG_CAPTION 4
#define IDS_ABOUT_PPG 5            // the About page's type name
#define IDS_ABOUT_PPG_CAPTION 6
#define IDS_QUILLON_PPG_CAPTION 200
#define IDB_QUILLON 1              // the toolbox picture
