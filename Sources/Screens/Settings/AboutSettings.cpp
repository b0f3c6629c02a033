#include "Screens/Settings/AboutSettings.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QVariantMap>
#include <array>
#include <string_view>
#include <utility>

#include "Base/BuildInformation.h"
#include "Screens/Models/Texts.h"

namespace stintbook {

namespace {

constexpr auto libraries = std::to_array<std::pair<std::string_view, std::string_view>>({
    {"Abseil", "Apache-2.0"},
    {"Asio", "BSL-1.0"},
    {"Boost", "BSL-1.0"},
    {"Cairo", "LGPL-2.1 or MPL-1.1"},
    {"fmt", "MIT"},
    {"ICU", "Unicode-3.0"},
    {"Inter", "OFL-1.1"},
    {"libsystemd", "LGPL-2.1-or-later"},
    {"libuuid", "BSD-3-Clause"},
    {"OpenSSL", "Apache-2.0"},
    {"Pango", "LGPL-2.0-or-later"},
    {"Qt 6", "LGPL-3.0"},
    {"RapidJSON", "MIT"},
    {"spdlog", "MIT"},
    {"SQLite", "Public domain"},
    {"SQLiteCpp", "MIT"},
    {"toml++", "MIT"},
    {"Wayland", "MIT"},
    {"XCB", "MIT"},
});

} // namespace

AboutSettings::AboutSettings(const ScreenContext& context, QObject* parent)
    : QObject(parent)
    , m_context(context)
{
}

QString AboutSettings::version() const
{
    return text(stintbook::version());
}

QVariantList AboutSettings::licences() const
{
    QVariantList list;
    for (const auto& [name, licence] : libraries)
        list.append(QVariantMap{{"name", text(name)}, {"licence", text(licence)}});
    return list;
}

QString AboutSettings::storeFile() const
{
    const auto* store = m_context.environment.store();
    return store == nullptr ? QString() : text(store->file().string());
}

QString AboutSettings::storeFolder() const
{
    const auto* store = m_context.environment.store();
    return store == nullptr ? QString() : text(store->file().parent_path().string());
}

void AboutSettings::copyStorePath() const
{
    QGuiApplication::clipboard()->setText(storeFile());
}

} // namespace stintbook
