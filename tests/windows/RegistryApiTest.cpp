#include "about/RegistryApi.h"

#include "Check.h"

#include <string>
#include <windows.h>

using namespace corvane;

namespace {

constexpr auto keyName = L"Software\\RegistryApiTest";

void store(const wchar_t *name, DWORD type, const void *bytes, std::size_t size)
{
    check::that(RegSetKeyValueW(HKEY_CURRENT_USER, keyName, name, type, bytes,
                                static_cast<DWORD>(size)) == ERROR_SUCCESS,
                "a value can be stored");
}

void storeText(const wchar_t *name, const std::wstring &text)
{
    store(name, REG_SZ, text.c_str(), (text.size() + 1) * sizeof(wchar_t));
}

void readBack(RegistryApi &registry, RegistryApi::Key key)
{
    const auto text = registry.queryValue(key, u"text", 1024);
    check::that(text && text->type == RegistryApi::stringType &&
                    text->bytes == std::vector<std::uint8_t>{'C', 0, ':', 0, 0xfc, 0, 0, 0},
                "a string comes as its bytes with its zero");
    const auto number = registry.queryValue(key, u"number", 1024);
    check::that(number && number->type == REG_DWORD &&
                    number->bytes == std::vector<std::uint8_t>{0x10, 0x0a, 0, 0},
                "a number comes as stored");
    check::that(registry.queryValue(key, u"full", 1024).has_value(), "1024 characters are read");
    check::that(!registry.queryValue(key, u"long", 1024), "1025 characters are refused");
    check::that(!registry.queryValue(key, u"missing", 1024), "a missing value is told");
}

} // namespace

int main()
{
    const DWORD number = 0x0a10;
    storeText(L"text", L"C:\u00fc");
    storeText(L"full", std::wstring(1023, L'x'));
    storeText(L"long", std::wstring(1024, L'x'));
    store(L"number", REG_DWORD, &number, sizeof number);

    const auto registry = systemRegistry();
    using enum RegistryApi::Root;
    check::that(!registry->openKey(LocalMachine, u"Software\\RegistryApiTest"),
                "a key is looked for under its root only");
    const auto key = registry->openKey(CurrentUser, u"Software\\RegistryApiTest");
    check::that(key.has_value(), "the key opens");
    if (key) {
        readBack(*registry, *key);
        registry->closeKey(*key);
    }
    RegDeleteTreeW(HKEY_CURRENT_USER, keyName);
    check::that(!registry->openKey(CurrentUser, u"Software\\RegistryApiTest"),
                "a missing key is told");
    return check::result();
}
