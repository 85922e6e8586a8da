// The stock property pages' server.
#include "stockpages.h"
#include "com/objbase.h"
#include "com/proppage.h"

namespace {

HRESULT StockPagesGetClassObject(REFCLSID, REFIID, void** ppv)
{
    *ppv = nullptr;
    return CLASS_E_CLASSNOTAVAILABLE;
}

} // namespace

void RegisterStockPropertyPages() { CoRegisterInprocServer(&StockPagesGetClassObject); }
