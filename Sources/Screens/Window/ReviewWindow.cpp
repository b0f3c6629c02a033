#include "Screens/Window/ReviewWindow.h"

#include <QGuiApplication>
#include <QScreen>
#include <string>

#include "Screens/Window/GlyphProvider.h"

namespace stintbook {

namespace {

constexpr std::string_view placementKey = "velloran.window";

/// Elsewhere windows are neither told where they are nor asked where they want to be.
bool windowsKnowTheirPlace()
{
    return QGuiApplication::platformName() == QStringLiteral("xcb");
}

} // namespace

ReviewWindow::ReviewWindow(PreferenceStoring& preferences)
    : m_preferences(preferences)
{
}

ReviewWindow::~ReviewWindow() = default;

void ReviewWindow::open(const ScreenContext& context)
{
    if (!m_engine)
        make(context);
    if (m_window == nullptr)
        return;
    if (!m_window->isVisible())
        m_placement.isMaximized ? m_window->showMaximized() : m_window->showNormal();
    else if (m_window->windowStates().testFlag(Qt::WindowMinimized))
        m_window->setWindowStates(m_window->windowStates() & ~Qt::WindowMinimized);
    m_window->raise();
    m_window->requestActivate();
}

void ReviewWindow::discard()
{
    if (m_window != nullptr)
        m_window->hide();
    m_window = nullptr;
    m_engine.reset();
    m_content.reset();
}

void ReviewWindow::make(const ScreenContext& context)
{
    m_content = std::make_unique<WindowContent>(context);
    m_engine = std::make_unique<QQmlApplicationEngine>();
    m_engine->addImportPath(QStringLiteral("qrc:/qt/qml"));
    m_engine->addImageProvider(QStringLiteral("glyphs"), new GlyphProvider);
    m_engine->addImageProvider(QStringLiteral("timesheets"), m_content->timesheetProvider());
    m_engine->setInitialProperties(m_content->properties());
    m_engine->load(QUrl(QStringLiteral("qrc:/qt/qml/Velloran/Window/MainWindow.qml")));
    if (m_engine->rootObjects().isEmpty())
        return;
    m_window = qobject_cast<QQuickWindow*>(m_engine->rootObjects().constFirst());
    place();
    for (const auto signal :
         {&QWindow::widthChanged, &QWindow::heightChanged, &QWindow::xChanged, &QWindow::yChanged})
        connect(m_window, signal, this, [this] { notePlacement(); });
    connect(m_window, &QWindow::visibleChanged, this, [this] { visibilityHasChanged(); });
}

void ReviewWindow::place()
{
    WindowPlacement wanted{.size = m_window->size()};
    const auto value = m_preferences.value(placementKey);
    if (const auto* const text = value ? std::get_if<std::string>(&*value) : nullptr) {
        m_rememberedPlacement = QString::fromStdString(*text);
        wanted = WindowPlacement::parse(m_rememberedPlacement).value_or(wanted);
    }
    const auto* screen = wanted.position ? QGuiApplication::screenAt(*wanted.position) : nullptr;
    if (screen == nullptr)
        screen = QGuiApplication::primaryScreen();
    m_placement = wanted.within(screen->availableGeometry(), m_window->minimumSize());
    m_window->resize(m_placement.size);
    if (m_placement.position && windowsKnowTheirPlace())
        m_window->setFramePosition(*m_placement.position);
}

void ReviewWindow::notePlacement()
{
    constexpr auto stretched = Qt::WindowMaximized | Qt::WindowFullScreen | Qt::WindowMinimized;
    if (!m_window->isVisible() || (m_window->windowStates() & stretched))
        return;
    m_placement.size = m_window->size();
    if (windowsKnowTheirPlace())
        m_placement.position = m_window->framePosition();
}

void ReviewWindow::visibilityHasChanged()
{
    m_content->setShown(m_window->isVisible());
    if (!m_window->isVisible()) {
        m_placement.isMaximized = m_window->windowStates().testFlag(Qt::WindowMaximized);
        if (const auto text = m_placement.text(); text != m_rememberedPlacement) {
            m_rememberedPlacement = text;
            m_later.post([&preferences = m_preferences, text = text.toStdString()] {
                preferences.store(placementKey, text);
            });
        }
    }
    Q_EMIT visibilityChanged();
}

} // namespace stintbook
