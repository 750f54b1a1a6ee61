#include "CDocumentColorer.h"

#include "Colorer/CBaseParserExeption.h"
#include "Colorer/CParserFactory.h"
#include "Edit/Model/CTextBuffer.h"

#include <algorithm>

CDocumentColorer::CDocumentColorer(CTextBuffer* pBuffer, const CString& csFileName)
    : m_pBuffer(pBuffer), m_Storage(pBuffer)
{
    try
    {
        m_pParser = CParserFactory::Instance()->CreateParser(&m_Storage, CString(), csFileName);
    }
    catch (const CBaseParserExeption&)
    {
        // A type without a parser leaves the text in the default colours.
        m_nFirstPending = -1;
        return;
    }
    m_pParser->AddEventsHandler(this);
}

CDocumentColorer::~CDocumentColorer()
{
    if (m_pParser)
        m_pParser->RemoveEventsHandler(this);
}

CString CDocumentColorer::GetType() const
{
    return m_pParser ? m_pParser->GetParserType() : CString();
}

BOOL CDocumentColorer::PaintPending()
{
    if (!m_pParser || m_nFirstPending < 0)
        return FALSE;
    const int nFirst = m_nFirstPending;
    m_nFirstPending = -1;
    ITextColorBuffer* pColors = m_pBuffer->GetTextColorBuffer();
    if (pColors == nullptr)
        return FALSE;
    m_pParser->PaintLines(pColors, nFirst, m_pBuffer->GetLinesCount() - 1);
    return TRUE;
}

void CDocumentColorer::OnTypeChanged(IParser*)
{
    OnLinesInvalidated(nullptr, 0);
}

void CDocumentColorer::OnLinesInvalidated(IParser*, int nFirstLine)
{
    const bool bWasWaiting = m_nFirstPending >= 0;
    nFirstLine = std::max(0, nFirstLine);
    m_nFirstPending = bWasWaiting ? std::min(m_nFirstPending, nFirstLine) : nFirstLine;
    if (!bWasWaiting && m_fnPending)
        m_fnPending();
}
