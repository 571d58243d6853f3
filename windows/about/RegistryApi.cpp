#include "windows/about/RegistryApi.h"

#ifdef _WIN32
#include <windows.h>
#endif

namespace corvane {

namespace {

#ifdef _WIN32

const wchar_t *wide(const std::u16string &text)
{
    static_assert(sizeof(wchar_t) == sizeof(char16_t));
    return reinterpret_cast<const wchar_t *>(text.c_str());
}

class SystemRegistry : public RegistryApi
{
public:
    std::optional<Key> openKey(Root root, const std::u16string &name) override
    {
        const HKEY base = root == Root::LocalMachine ? HKEY_LOCAL_MACHINE : HKEY_CURRENT_USER;
        HKEY key = nullptr;
        if (RegOpenKeyExW(base, wide(name), 0, KEY_READ, &key) != ERROR_SUCCESS)
            return std::nullopt;
        return key;
    }

    std::optional<Value> queryValue(Key key, const std::u16string &name,
                                    std::size_t characters) override
    {
        Value value;
        value.bytes.resize(characters * sizeof(char16_t));
        DWORD type = 0;
        auto size = static_cast<DWORD>(value.bytes.size());
        if (RegQueryValueExW(static_cast<HKEY>(key), wide(name), nullptr, &type, value.bytes.data(),
                             &size) != ERROR_SUCCESS)
            return std::nullopt;
        value.type = type;
        value.bytes.resize(size);
        return value;
    }

    void closeKey(Key key) override { RegCloseKey(static_cast<HKEY>(key)); }
};

#else

class SystemRegistry : public RegistryApi
{
public:
    std::optional<Key> openKey(Root, const std::u16string &) override { return std::nullopt; }
    std::optional<Value> queryValue(Key, const std::u16string &, std::size_t) override
    {
        return std::nullopt;
    }
    void closeKey(Key) override {}
};

#endif

} // namespace

std::unique_ptr<RegistryApi> systemRegistry()
{
    return std::make_unique<SystemRegistry>();
}

} // namespace corvane
