#include "platform/registry.h"

#ifdef _WIN32
#include <windows.h>

#include <vector>
#endif

namespace platform {

#ifdef _WIN32

std::optional<std::wstring> registryText(RegistryRoot root, const std::wstring& key,
                                         const std::wstring& value, std::size_t roomBytes)
{
    const HKEY rootKey =
        root == RegistryRoot::LocalMachine ? HKEY_LOCAL_MACHINE : HKEY_CURRENT_USER;
    HKEY opened = nullptr;
    if (RegOpenKeyExW(rootKey, key.c_str(), 0, KEY_READ, &opened) != ERROR_SUCCESS) {
        return std::nullopt;
    }
    // one character more than the caller's room: a value need not be stored with its zero
    std::vector<wchar_t> text(roomBytes / sizeof(wchar_t) + 1, L'\0');
    auto bytes = static_cast<DWORD>(roomBytes / sizeof(wchar_t) * sizeof(wchar_t));
    DWORD type = REG_NONE;
    const LSTATUS status = RegQueryValueExW(opened, value.c_str(), nullptr, &type,
                                            reinterpret_cast<BYTE*>(text.data()), &bytes);
    RegCloseKey(opened);
    if (status != ERROR_SUCCESS || (type != REG_SZ && type != REG_EXPAND_SZ)) {
        return std::nullopt;
    }
    return std::wstring(text.data());
}

#else

std::optional<std::wstring> registryText(RegistryRoot, const std::wstring&, const std::wstring&,
                                         std::size_t)
{
    return std::nullopt;
}

#endif

} // namespace platform
