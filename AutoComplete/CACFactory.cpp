#include "AutoComplete/CACFactory.h"

#include "AutoComplete/CACSettings.h"
#include "AutoComplete/CACXMLParser.h"

IACSettings* CACFactory::GetACSettings()
{
    return &CACSettings::Instance();
}

IACManager* CACFactory::CreateACManager()
{
    return new CACXMLParser();
}
