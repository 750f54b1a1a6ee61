#include "Colorer/ParserResults.h"

#include "Platform/CException.h"

const CSyntaxItem& CSyntaxPath::GetItem(int i) const
{
    if (i < 0 || i >= GetItemsCount())
        AfxThrowInvalidArgException();
    return m_aItems[static_cast<std::size_t>(i)];
}
