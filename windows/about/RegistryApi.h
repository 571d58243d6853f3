#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace corvane {

/// The three calls to the operating system's registry that reading one value takes. Free of Qt, so
/// that it compiles and runs alone on every system; a test hands in its own.
class RegistryApi
{
public:
    enum class Root { LocalMachine, CurrentUser };
    using Key = void *;

    /// The type of a string value; its bytes are UTF-16, the least significant byte first.
    static constexpr std::uint32_t stringType = 1;

    struct Value
    {
        std::uint32_t type = 0;
        std::vector<std::uint8_t> bytes; ///< as stored, a string with its terminating zero
    };

    virtual ~RegistryApi() = default;

    /// Opens a key for reading, as in u"SOFTWARE\\Vendor"; nothing when it cannot be opened. What
    /// was opened wants closeKey.
    virtual std::optional<Key> openKey(Root root, const std::u16string &name) = 0;
    /// Reads a value of at most `characters` 16-bit characters; nothing when there is none of that
    /// name or it is longer.
    virtual std::optional<Value> queryValue(Key key, const std::u16string &name,
                                            std::size_t characters) = 0;
    virtual void closeKey(Key key) = 0;

    RegistryApi(const RegistryApi &) = delete;
    RegistryApi &operator=(const RegistryApi &) = delete;

protected:
    RegistryApi() = default;
};

/// The Windows registry; elsewhere one that holds no key.
std::unique_ptr<RegistryApi> systemRegistry();

} // namespace corvane
