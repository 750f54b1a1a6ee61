// CFileType: one entry of the table of file types.
#pragma once

#include "Utils/IFileType.h"

class CFileType : public IFileType
{
public:
    CFileType() = default;
    CFileType(const CString& csTypeName, const CString& csDescription, const CString& csFilter,
              const CString& csImagePath, bool bDefault, bool bExtended);

    [[nodiscard]] CString GetFilter() const override { return m_csFilter; }
    void GetExtArray(CStringArray& aExt) const override;
    [[nodiscard]] CString GetTypeName() const override { return m_csTypeName; }
    [[nodiscard]] CString GetTypeDescription(bool bNoAmpersand) const override;
    [[nodiscard]] CString GetImagePath() const override { return m_csImagePath; }
    [[nodiscard]] int GetIconIndex() const override { return m_nIconIndex; }
    void SetIconIndex(int nIndex) override { m_nIconIndex = nIndex; }
    [[nodiscard]] bool IsDefault() const override { return m_bDefault; }
    [[nodiscard]] bool IsExtended() const override { return m_bExtended; }

private:
    CString m_csFilter;      // "*.html; *.htm"
    CString m_csDescription; // menu text with its mnemonic, "&HTML"
    CString m_csTypeName;    // "html"
    CString m_csImagePath;   // "Images/html.bmp"
    int m_nIconIndex = -1;   // index in an image list, -1 until set
    bool m_bDefault = false; // the type of new documents
    bool m_bExtended = false; // read from the extended table
};
