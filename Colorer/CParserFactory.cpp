#include "Colorer/CParserFactory.h"

#include "Colorer/CParser.h"

#include "Utils/CFileTypes.h"
#include "Utils/IFileType.h"

IParserFactory* CParserFactory::Instance()
{
    static CParserFactory s_factory;
    return &s_factory;
}

std::unique_ptr<IParser> CParserFactory::CreateParser(ILinesStorage* pStorage, const CString& csType,
                                                      const CString& csFileName)
{
    const CString csActual = csType.IsEmpty() ? DetectType(pStorage, csFileName) : csType;
    return std::make_unique<CParser>(pStorage, csActual);
}

CString CParserFactory::TypeOfFirstLine(const CString& csLine)
{
    CString csStart = csLine.Left(256);
    csStart.TrimLeft();
    CString csLower = csStart;
    csLower.MakeLower();
    if (csLower.Find(u"<?xml") == 0)
        return u"xml";
    if (csLower.Find(u"<?php") == 0 || csLower.Find(u"<?=") == 0)
        return u"php";
    if (csLower.Find(u"#!") == 0)
        return csLower.Find(u"perl") > 0 ? CString(u"perl") : CString();
    if (csLower.Find(u"<%@") == 0)
        return csLower.Find(u"page") > 0 || csLower.Find(u"taglib") > 0 ? CString(u"jsp") : CString(u"asp");
    if (csLower.Find(u"<!doctype html") == 0 || csLower.Find(u"<html") == 0)
        return u"html";
    return CString();
}

CString CParserFactory::DetectType(ILinesStorage* pStorage, const CString& csFileName)
{
    const int nDot = csFileName.ReverseFind(u'.');
    const int nSlash = std::max(csFileName.ReverseFind(u'/'), csFileName.ReverseFind(u'\\'));
    if (nDot > nSlash)
    {
        IFileType* pType = GetFileTypes()->GetFileTypeByExt(csFileName.Mid(nDot + 1));
        if (pType && CParser::IsKnownType(pType->GetTypeName()) && pType->GetTypeName() != u"text")
            return pType->GetTypeName();
    }
    if (pStorage && pStorage->GetLinesCount() > 0)
    {
        const CString csType = TypeOfFirstLine(pStorage->GetLine(0));
        if (!csType.IsEmpty())
            return csType;
    }
    return u"text";
}
