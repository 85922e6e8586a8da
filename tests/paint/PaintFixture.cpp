// The paint fixture: control, memory surface, draw-call log and the check that no GDI object is left behind.
#include "PaintFixture.h"
#include <algorithm>
#include <sstream>
#include "gdi/standin.h"

PaintTest::PaintTest()
{
    m_nGdiObjects = GdiGetLiveObjectCount();
    c = new CQuillonCtrl;
    c->InitNew();
    m_dc.CreateCompatibleDC(nullptr);
    m_hbm = ::CreateBitmap(kWidth, kHeight, 1, 32, nullptr);
    m_hOldBitmap = m_dc.SelectObject(m_hbm);
    Clear(RGB(0x12, 0x34, 0x56));
}

PaintTest::~PaintTest()
{
    GdiSetDrawLog(FALSE);
    m_dc.SelectObject(m_hOldBitmap);
    ::DeleteObject(m_hbm);
    m_dc.DeleteDC();
    c->Release();
    EXPECT_EQ(GdiGetLiveObjectCount(), m_nGdiObjects) << GdiDescribeLiveObjects();
}

std::vector<std::string> PaintTest::Log(const std::function<void(CDC*)>& paint)
{
    GdiSetDrawLog(TRUE);
    paint(&m_dc);
    std::vector<std::string> log = GdiGetDrawLog();
    GdiSetDrawLog(FALSE);
    return log;
}

std::vector<std::string> PaintTest::Only(const std::vector<std::string>& log, std::initializer_list<const char*> prefixes)
{
    std::vector<std::string> out;
    for (const auto& line : log)
        if (std::any_of(prefixes.begin(), prefixes.end(), [&](const char* p) { return line.rfind(p, 0) == 0; }))
            out.push_back(line);
    return out;
}

void PaintTest::Clear(COLORREF clr)
{
    CBrush brush(clr);
    CRect all(0, 0, kWidth, kHeight);
    m_dc.FillRect(&all, &brush);
}

void ExpectLines(const std::vector<std::string>& expected, const std::vector<std::string>& actual)
{
    if (expected == actual) return;
    std::ostringstream os;
    size_t n = std::max(expected.size(), actual.size());
    for (size_t i = 0; i < n; ++i) {
        const std::string e = i < expected.size() ? expected[i] : "", a = i < actual.size() ? actual[i] : "";
        os << (e == a ? "   " : "!! ") << e << std::string(e.size() < 44 ? 44 - e.size() : 1, ' ') << "| " << a << "\n";
    }
    ADD_FAILURE() << "expected | actual\n" << os.str();
}
