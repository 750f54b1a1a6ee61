// CACXMLWordsConfigurator: the configurator of the word lists: runs each scheme's word style sheet.
#pragma once

#include "AutoComplete/CACXMLConfigurator.h"

class CACXMLWordsConfigurator : public CACXMLConfigurator
{
public:
    using CACXMLConfigurator::CACXMLConfigurator;

    CString GetXslContent(int nScheme) override { return m_Cache.GetScheme(nScheme).m_csTransformXslFile; }
};
