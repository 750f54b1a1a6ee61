// Fuzz entry point of the stored editor settings: the input is the profile store's file, which the
// settings load from.
#include "Edit/Screen/CTextSettings.h"
#include "Platform/CProfileStore.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <unistd.h>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t nSize)
{
    static const std::filesystem::path file =
        std::filesystem::temp_directory_path() /
        ("tessaroline-fuzz-profile-" + std::to_string(getpid()) + ".ini");
    std::ofstream(file, std::ios::binary | std::ios::trunc)
        .write(reinterpret_cast<const char*>(pData), static_cast<std::streamsize>(nSize));

    const std::unique_ptr<CProfileStore> pStore = CProfileStore::FromFile(CString::FromUtf8(file.string()));
    CTextSettings settings;
    settings.SetProfileStore(pStore.get());
    try
    {
        settings.LoadSettings();
    }
    catch (const CException&)
    {
    }
    return 0;
}
