#pragma once

#include <QObject>
#include <QQmlApplicationEngine>
#include <QQuickWindow>
#include <memory>

#include "App/Ports/MenuBarIconLocating.h"
#include "Base/Executor.h"
#include "Base/Preferences.h"
#include "Screens/Window/WindowContent.h"
#include "Screens/Window/WindowPlacement.h"

namespace stintbook {

/// The application's window with its screens. Made when it is first opened, so that a start at login costs
/// nothing of it; then kept, and opened where it was left.
class ReviewWindow : public QObject, public ReviewWindowSourcing {
    Q_OBJECT

public:
    /// The preferences outlive the window.
    explicit ReviewWindow(PreferenceStoring& preferences);
    ~ReviewWindow() override;
    ReviewWindow(const ReviewWindow&) = delete;
    ReviewWindow& operator=(const ReviewWindow&) = delete;

    bool isOpen() const override { return m_window != nullptr && m_window->isVisible(); }
    /// Brings it to the front.
    void open(const ScreenContext& context);
    /// For good.
    void discard();
    /// Null before it is first opened.
    WindowContent* content() const { return m_content.get(); }

Q_SIGNALS:
    /// Whether it is open is another question now.
    void visibilityChanged();

private:
    void make(const ScreenContext& context);
    void place();
    void notePlacement();
    void visibilityHasChanged();

    PreferenceStoring& m_preferences;
    std::unique_ptr<WindowContent> m_content;
    // The window goes before its models.
    std::unique_ptr<QQmlApplicationEngine> m_engine;
    QQuickWindow* m_window = nullptr;
    /// As it is while it is open, and as it is remembered.
    WindowPlacement m_placement;
    QString m_rememberedPlacement;
    /// For what would keep the window waiting.
    SerialExecutor m_later{"window"};
};

} // namespace stintbook
