// Fuzz entry point of the bookmark archive: the input is read through an archive into a set of
// bookmarks, which keeps its items whatever the archive holds.
#include "Edit/Model/CBookmarks.h"
#include "Platform/CArchive.h"
#include "Platform/CMemFile.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t nSize)
{
    CBookmarks bookmarks;
    bookmarks.AddBookmark(3, 1);
    bookmarks.AddBookmark(7, 2);
    CMemFile file(std::string_view(reinterpret_cast<const char*>(pData), nSize));
    try
    {
        CArchive ar(&file, CArchive::load, 4096);
        bookmarks.Serialize(ar);
    }
    catch (const CException&)
    {
    }
    bookmarks.AssertValid();
    if (bookmarks.GetSize() != 2)
        std::abort();
    return 0;
}
