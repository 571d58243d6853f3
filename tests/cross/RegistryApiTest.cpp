#include "windows/about/RegistryApi.h"

#include "Check.h"

#include <string>
#include <windows.h>

using namespace corvane;
using Bytes = std::vector<std::uint8_t>;

namespace {

constexpr auto keyName = u"Software\\RegistryApiTest";

/// Stores the text, with its terminating zero, as a value of any type.
void store(const wchar_t *name, DWORD type, const std::wstring &text)
{
    const auto size = static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t));
    const auto *key = reinterpret_cast<const wchar_t *>(keyName);
    check::that(RegSetKeyValueW(HKEY_CURRENT_USER, key, name, type, text.c_str(), size) == 0,
                "a value can be stored");
}

} // namespace

int main()
{
    store(L"text", REG_SZ, L"C:\u00fc");
    store(L"full", REG_SZ, std::wstring(1023, L'x'));
    store(L"long", REG_SZ, std::wstring(1024, L'x'));
    store(L"number", REG_DWORD, L"\u0a10");

    using enum RegistryApi::Root;
    const auto registry = systemRegistry();
    check::that(!registry->openKey(LocalMachine, keyName), "a key belongs to its root only");
    const auto key = registry->openKey(CurrentUser, keyName);
    check::that(key.has_value(), "the key opens");
    const auto text = registry->queryValue(*key, u"text", 1024);
    check::that(text && text->type == RegistryApi::stringType &&
                    text->bytes == Bytes{'C', 0, ':', 0, 0xfc, 0, 0, 0},
                "a string comes as its bytes with its zero");
    const auto number = registry->queryValue(*key, u"number", 1024);
    check::that(number && number->type == REG_DWORD && number->bytes == Bytes{0x10, 0x0a, 0, 0},
                "a number comes as stored");
    check::that(registry->queryValue(*key, u"full", 1024).has_value(), "1024 characters are read");
    check::that(!registry->queryValue(*key, u"long", 1024), "1025 characters are refused");
    check::that(!registry->queryValue(*key, u"missing", 1024), "a missing value is told");
    registry->closeKey(*key);
    return check::result();
}
