#pragma once

#include <QObject>
#include <memory>
#include <stop_token>

#include <QtQml/qqmlregistration.h>

#include "Screens/Window/ScreenContext.h"

namespace stintbook {

/// Copies of everything: written to a file, and read from one into an empty store. They work through a connection
/// and on a thread of their own, so that the screens' questions do not wait behind them.
class DataCopies : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the application")

    Q_PROPERTY(bool isBusy READ isBusy NOTIFY changed)
    Q_PROPERTY(bool isCancelling READ isCancelling NOTIFY changed)
    Q_PROPERTY(QString activity READ activity NOTIFY changed)
    Q_PROPERTY(double progress READ progress NOTIFY changed)
    Q_PROPERTY(QString outcome READ outcome NOTIFY changed)
    Q_PROPERTY(QString problem READ problem NOTIFY changed)

public:
    explicit DataCopies(const ScreenContext& context, QObject* parent = nullptr);
    /// What is under way ends without a trace.
    ~DataCopies() override;
    DataCopies(const DataCopies&) = delete;
    DataCopies& operator=(const DataCopies&) = delete;

    bool isBusy() const { return m_isBusy; }
    bool isCancelling() const { return m_isBusy && m_stop.stop_requested(); }
    /// What is being done.
    const QString& activity() const { return m_activity; }
    /// From 0 to 1.
    double progress() const { return m_progress; }
    const QString& outcome() const { return m_outcome; }
    const QString& problem() const { return m_problem; }

    /// Asks for the file, then does it.
    Q_INVOKABLE void chooseExport();
    Q_INVOKABLE void chooseImport();
    Q_INVOKABLE void cancel();
    Q_INVOKABLE void dismiss();

Q_SIGNALS:
    void changed();

private:
    struct Done {
        QString outcome;
        QString problem;
    };

    void exportTo(const QString& file);
    void importFrom(const QString& file);
    void write(const QString& file, const QString& caution);
    std::function<void(double)> shownProgress();
    void begin(const QString& activity);
    void end(const Done& done);
    StoreDesk& desk();

    ScreenContext m_context;
    bool m_isBusy = false;
    QString m_activity;
    double m_progress = 0;
    QString m_outcome;
    QString m_problem;
    std::stop_source m_stop;
    /// Made with the first copy.
    std::unique_ptr<StoreDesk> m_desk;
};

} // namespace stintbook
