#include "Edit/tests/CScreenTestHarness.h"

#include <cstdio>

CScreenTestHarness::CScreenTestHarness()
{
    for (int i = 0; i < COLORS_COUNT; ++i)
        m_Settings.SetColor(i, COLORS[i]);
    Show(FALSE, TRUE, FALSE);
}

CScreenTestHarness::~CScreenTestHarness()
{
    m_Screen.RemoveEventsHandler(&m_Processor);
    m_Screen.RemoveEventsHandler(&m_View);
    if (m_Screen.IsInit())
        m_Screen.Uninit();
}

void CScreenTestHarness::SetupScreen(const CString& csMarked, int cx, int cy, int nWrap)
{
    Setup(csMarked, nWrap);
    m_Screen.Init(&m_Buffer, &m_View, &m_Settings, &m_Settings, nullptr, &m_Processor);
    m_Screen.AddEventsHandler(&m_View);
    m_Screen.AddEventsHandler(&m_Processor);
    m_Screen.OnSize(nullptr, cx, cy);
}

void CScreenTestHarness::Show(BOOL bRuler, BOOL bLineNumbers, BOOL bCursorIndicator)
{
    m_Settings.SetShowRuler(bRuler);
    m_Settings.SetShowLineNumbers(bLineNumbers);
    m_Settings.SetShowCursorIndicator(bCursorIndicator);
}

std::string CScreenTestHarness::Hex(COLORREF cr)
{
    char sz[16];
    std::snprintf(sz, sizeof(sz), "#%x", static_cast<unsigned>(cr));
    return sz;
}

namespace
{
std::string Rect(const CRect& rt)
{
    return std::to_string(rt.left) + "," + std::to_string(rt.top) + " " + std::to_string(rt.right) + "," +
           std::to_string(rt.bottom);
}

std::string Point(const CPoint& pt)
{
    return std::to_string(pt.x) + "," + std::to_string(pt.y);
}
} // namespace

std::string CScreenTestHarness::Describe(const CRecordingDC::SRecord& record)
{
    using EKind = CRecordingDC::EKind;
    std::string s;
    switch (record.kind)
    {
    case EKind::FillSolidRect:
        return "fill " + Rect(record.rt) + " " + Hex(record.crColor);
    case EKind::FillRect:
        return "brushfill " + Rect(record.rt) + " " + Hex(record.crColor);
    case EKind::Line:
        return "line " + Point(record.aPoints[0]) + " " + Point(record.aPoints[1]) + " pen " +
               std::to_string(record.pen.GetStyle()) + "/" + std::to_string(record.pen.GetWidth()) + "/" +
               Hex(record.pen.GetColor());
    case EKind::Rectangle:
        return "rect " + Rect(record.rt);
    case EKind::Ellipse:
        return "ellipse " + Rect(record.rt);
    case EKind::Polygon:
        s = "poly";
        for (const CPoint& pt : record.aPoints)
            s += " " + Point(pt);
        return s + " brush " + Hex(record.brush.GetColor());
    case EKind::Text:
        return "text " + Point(record.aPoints[0]) + " '" + record.csText.ToUtf8() + "' " +
               Hex(record.crText) + "/" + Hex(record.crBk);
    case EKind::TransparentBlt:
        return "blt " + Rect(record.rt);
    }
    return "?";
}

std::vector<std::string> CScreenTestHarness::Describe(const CRecordingDC& dc)
{
    std::vector<std::string> aLines;
    for (const CRecordingDC::SRecord& record : dc.GetRecords())
        aLines.push_back(Describe(record));
    return aLines;
}

std::string CScreenTestHarness::Join(const std::vector<std::string>& aLines)
{
    std::string s;
    for (const std::string& sLine : aLines)
        s += (s.empty() ? "" : "; ") + sLine;
    return s;
}
