// The recording host used by the control's tests.
#include "Harness.h"
#include <sstream>
#include "com/objbase.h"
#include "gdi/wingdi.h"
#include "control/QuillonCtrl.h"
#include "LinkedModule.h"

CQuillonCtrl* Inside(CControlSite* q) { return static_cast<CQuillonCtrl*>(static_cast<COleControl*>(q->Control())); }

ControlTest::ControlTest()
{
    UseLinkedModule();
    m_form = m_host.NewForm(RECT{100, 100, 500, 400});
    m_host.m_onPropertyChanged = [this](CControlSite& site, DISPID id) {
        // The stock text, which the library does not declare, is known by its standard dispid.
        const MemberInfo* m = site.Info().FindMember(id);
        m_log.push_back("PropertyChanged " + (m ? ToUtf8(m->name) : id == DISPID_TEXT ? "Text" : std::to_string(id)));
    };
    m_host.m_onBeep = [this](UINT) { m_log.push_back("Beep"); };
    m_gdiObjects = GdiGetLiveObjectCount();
}

// Nothing may outlive a test: windows, timers, capture or GDI objects.
ControlTest::~ControlTest()
{
    m_form = nullptr;
    m_pHost.reset();
    EXPECT_EQ(GetLiveWindowCount(), 0) << "windows left behind";
    EXPECT_EQ(GetLiveTimerCount(), 0) << "timers left behind";
    EXPECT_EQ(GetCapture(), nullptr) << "capture left behind";
    EXPECT_EQ(GdiGetLiveObjectCount(), m_gdiObjects) << GdiDescribeLiveObjects();
    ResetUserState();
}

namespace {
void Record(std::vector<std::string>& log, const EventInfo& e, VARIANT* args, UINT n)
{
    std::string line = ToUtf8(e.name);
    for (UINT i = 0; i < n; ++i) {
        COleVariant text;
        VariantChangeType(&text, &args[i], 0, VT_BSTR);
        line += " " + ToUtf8(BstrToString(text.bstrVal));
    }
    log.push_back(line);
}
} // namespace

CControlSite* ControlTest::Create()
{
    HRESULT hr = E_FAIL;
    CControlSite* site = m_form->Create(u"QUILLON.QuillonCtrl.2", RECT{10, 10, 130, 34}, &hr);
    EXPECT_EQ(hr, S_OK);
    if (site) site->SetEventHandler([this](const EventInfo& e, VARIANT* a, UINT n) { Record(m_log, e, a, n); });
    return site;
}

CControlSite* ControlTest::Load(const CString& bag)
{
    HRESULT hr = E_FAIL;
    CControlSite* site = m_form->Load(u"QUILLON.QuillonCtrl.2", bag, RECT{10, 40, 130, 64}, &hr);
    EXPECT_EQ(hr, S_OK);
    if (site) site->SetEventHandler([this](const EventInfo& e, VARIANT* a, UINT n) { Record(m_log, e, a, n); });
    return site;
}

void ControlTest::Put(CControlSite* q, const char16_t* name, const COleVariant& value)
{
    EXPECT_EQ(q->Put(name, value), S_OK) << ToUtf8(CString(name));
}

COleVariant ControlTest::Get(CControlSite* q, const char16_t* name)
{
    COleVariant v;
    EXPECT_EQ(q->Get(name, &v), S_OK) << ToUtf8(CString(name));
    return v;
}

CString ControlTest::GetText(CControlSite* q, const char16_t* name)
{
    COleVariant v = Get(q, name);
    EXPECT_EQ(v.vt, VT_BSTR) << ToUtf8(CString(name));
    return v.vt == VT_BSTR ? BstrToString(v.bstrVal) : CString();
}

LONG ControlTest::GetLong(CControlSite* q, const char16_t* name)
{
    COleVariant v = Get(q, name);
    EXPECT_EQ(v.ChangeType(VT_I8), S_OK) << ToUtf8(CString(name));
    return static_cast<LONG>(v.llVal); // colours above 0x7FFFFFFF read as their 32 bits
}

COleVariant ControlTest::Call(CControlSite* q, const char16_t* name, std::vector<VARIANT> args)
{
    COleVariant v;
    EXPECT_EQ(q->Call(name, std::move(args), &v), S_OK) << ToUtf8(CString(name));
    return v;
}

std::vector<std::string> ControlTest::TakeLog()
{
    std::vector<std::string> out;
    out.swap(m_log);
    return out;
}

void ExpectSequence(const std::vector<std::string>& expected, const std::vector<std::string>& actual)
{
    if (expected == actual) return;
    std::ostringstream table;
    size_t n = std::max(expected.size(), actual.size());
    table << "expected | actual\n";
    for (size_t i = 0; i < n; ++i)
        table << (i < expected.size() ? expected[i] : "-") << " | " << (i < actual.size() ? actual[i] : "-")
              << (i < expected.size() && i < actual.size() && expected[i] == actual[i] ? "" : "   <<") << "\n";
    ADD_FAILURE() << table.str();
}
