#include "Edit/Model/CEditTextStore2.h"

void CEditTextStore2::Create()
{
    m_aLines.RemoveAll();
    m_aLines.Add(CString(u"Test1"));
    m_aLines.Add(CString(u"Test2"));
    m_aLines.Add(CString(u"Test3"));
}
