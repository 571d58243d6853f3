#pragma once

#include "about/ProgramLauncher.h"
#include "about/RegistryApi.h"
#include "about/SystemInfo.h"
#include "tests/support/ScriptedDialogs.h"

#include <gtest/gtest.h>
#include <map>
#include <set>

namespace corvane {

/// A registry in memory: values by "key|name"; counts what is open.
class FakeRegistry : public RegistryApi
{
public:
    std::optional<Key> openKey(Root root, const std::u16string &name) override
    {
        m_key = QString::fromStdU16String(name);
        if (root != Root::LocalMachine || !keys.contains(m_key))
            return std::nullopt;
        ++open;
        return &m_key;
    }
    std::optional<Value> queryValue(Key key, const std::u16string &name,
                                    std::size_t characters) override
    {
        EXPECT_EQ(key, &m_key);
        const auto value = keys[m_key].find(QString::fromStdU16String(name));
        if (value == keys[m_key].end() || value->second.bytes.size() > 2 * characters)
            return std::nullopt;
        return value->second;
    }
    void closeKey(Key) override { --open; }

    static Value string(const QString &text)
    {
        Value value{.type = stringType, .bytes = {}};
        for (const QChar c : text + QChar(0))
            value.bytes.insert(value.bytes.end(), {static_cast<std::uint8_t>(c.cell()),
                                                   static_cast<std::uint8_t>(c.row())});
        return value;
    }

    std::map<QString, std::map<QString, Value>> keys;
    int open = 0;

private:
    QString m_key;
};

class FakeLauncher : public ProgramLauncher
{
public:
    [[nodiscard]] bool fileExists(const QString &path) const override
    {
        return files.contains(path);
    }
    [[nodiscard]] QString findProgram(const QString &name) const override
    {
        return installed.contains(name) ? QStringLiteral("/usr/bin/") + name : QString();
    }
    bool start(const QString &program, const QStringList &arguments) override
    {
        started.append((QStringList{program} + arguments).join(u' '));
        return !broken.contains(program);
    }

    QStringList files;
    QStringList installed;
    QStringList broken; ///< programs that do not start
    QStringList started;
};

struct AboutFixture : testing::Test
{
    FakeRegistry registry;
    FakeLauncher launcher;
    ScriptedDialogs dialogs;
    SystemInfo systemInfo{registry, launcher, dialogs};
};

} // namespace corvane
