// Opens panelview's window on a private X server and checks that it shows
// something. Exits 77 (skipped) when there is no Xvfb to run.
#include <QGuiApplication>
#include <QImage>
#include <QPixmap>
#include <QProcess>
#include <QScreen>
#include <QStandardPaths>
#include <QThread>
#include <QElapsedTimer>

#include <cstdio>

namespace {

int failed(const char *message)
{
    std::fprintf(stderr, "FAIL: %s\n", message);
    return 1;
}

// Pixels that differ from the (black) root window.
int paintedPixels(const QImage &image)
{
    int painted = 0;
    for (int y = 0; y < image.height(); ++y) {
        const QRgb *line = reinterpret_cast<const QRgb *>(image.constScanLine(y));
        for (int x = 0; x < image.width(); ++x)
            painted += (line[x] & 0xffffff) != 0;
    }
    return painted;
}

} // namespace

int main(int argc, char *argv[])
{
    if (argc < 3)
        return failed("usage: tst_panelwindow PANELVIEW PANEL.xml");
    const QString xvfb = QStandardPaths::findExecutable(QStringLiteral("Xvfb"));
    if (xvfb.isEmpty()) {
        std::printf("SKIP: Xvfb is not installed\n");
        return 77;
    }

    // Xvfb picks a free display itself and tells us which on its output.
    QProcess server;
    server.start(xvfb, {QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-screen"), QStringLiteral("0"),
                        QStringLiteral("800x600x24"), QStringLiteral("-nolisten"), QStringLiteral("tcp"), QStringLiteral("-br")});
    if (!server.waitForStarted(10000))
        return failed("Xvfb did not start");
    QByteArray number;
    QElapsedTimer clock;
    clock.start();
    while (!number.contains('\n') && clock.elapsed() < 20000) {
        server.waitForReadyRead(500);
        number += server.readAllStandardOutput();
    }
    if (number.trimmed().isEmpty()) {
        server.kill();
        return failed("Xvfb did not name its display");
    }
    const QByteArray display = ':' + number.trimmed();
    qputenv("DISPLAY", display);
    qputenv("QT_QPA_PLATFORM", "xcb");

    int result = 0;
    {
        QGuiApplication app(argc, argv);
        QProcess view;
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(QStringLiteral("DISPLAY"), QString::fromLatin1(display));
        env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
        view.setProcessEnvironment(env);
        view.setProcessChannelMode(QProcess::ForwardedChannels);
        view.start(QString::fromLocal8Bit(argv[1]), {QString::fromLocal8Bit(argv[2])});
        if (!view.waitForStarted(10000)) {
            result = failed("panelview did not start");
        } else {
            QImage shot;
            int painted = 0;
            clock.restart();
            while (clock.elapsed() < 30000 && view.state() == QProcess::Running) {
                shot = app.primaryScreen()->grabWindow(0).toImage().convertToFormat(QImage::Format_RGB32);
                painted = paintedPixels(shot);
                if (painted > 2000)
                    break;
                QThread::msleep(200);
            }
            shot.save(QStringLiteral("panelwindow.png"));
            if (view.state() != QProcess::Running)
                result = failed("panelview ended instead of showing its window");
            else if (painted <= 2000)
                result = failed("the screen stayed blank (see panelwindow.png)");
            else
                std::printf("PASS: the window painted %d pixels\n", painted);
            view.terminate();
            if (!view.waitForFinished(5000))
                view.kill();
        }
    }
    server.terminate();
    if (!server.waitForFinished(5000))
        server.kill();
    return result;
}
