#ifndef CORVANE_TESTS_FUZZSUPPORT_H
#define CORVANE_TESTS_FUZZSUPPORT_H

#include "support/RecordingHost.h"

#include <corvane/ParameterManagement.h>

#include <QApplication>
#include <QByteArray>
#include <QDialog>
#include <QMenu>
#include <QTimer>

#include <cstddef>
#include <cstdint>

namespace Fuzz {

//! The application every target needs, on the offscreen platform; made once.
inline void ensureApplication()
{
    static QApplication *app = [] {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        qputenv("QT_FONT_DPI", "96");
        // Warnings about odd descriptions are expected by the thousand.
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
        static int argc = 1;
        static char name[] = "fuzz";
        static char *argv[] = {name, nullptr};
        auto *application = new QApplication(argc, argv);
        // File and colour choosers and menus run their own event loop, which
        // would wait for a user: they are dismissed as soon as they open.
        auto *dismiss = new QTimer(application);
        dismiss->setInterval(0);
        QObject::connect(dismiss, &QTimer::timeout, [] {
            if (auto *dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget()))
                dialog->reject();
            else if (QWidget *modal = QApplication::activeModalWidget())
                modal->close();
            if (auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget()))
                menu->close();
        });
        dismiss->start();
        return application;
    }();
    Q_UNUSED(app)
}

inline QByteArray bytes(const uint8_t *data, size_t size)
{
    return QByteArray(reinterpret_cast<const char *>(data), int(qMin<size_t>(size, 1 << 20)));
}

/*
    A host that answers every read from its table and takes every parameter
    to exist; requests are counted, not kept, so that long runs stay small.
*/
class Host : public RecordingHost
{
public:
    Host()
    {
        owner = {{QStringLiteral("dev_uniq_id"), QStringLiteral("dev1")},
                 {QStringLiteral("dev_model"), QStringLiteral("Vela8")}};
        active = true;
    }
    bool parameterExists(const QVariantMap &) override { return true; }
    bool sendRequest(QWidget *, int, const QVariantMap &, int, const QMap<QString, QString> &) override
    {
        ++sent;
        return true;
    }
    // A host that answers file names itself: library buttons send the
    // answer without building a file dialog for every input.
    bool answerFileName(QWidget *, bool, const QString &, const QString &, QString &path) override
    {
        path = QStringLiteral("fuzz/library");
        return true;
    }
    int sent = 0;
};

} // namespace Fuzz

#endif
