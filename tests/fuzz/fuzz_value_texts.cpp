// Value texts from the device: the first line names the type (or its
// index), every later line "position<TAB>display text" for one of four
// bound addresses. The control is then painted, stepped, wheeled and dragged.
#include "FuzzSupport.h"

#include "plugin/WidgetFactory.h"

#include <corvane/IWidgetCore.h>

#include <QDomDocument>
#include <QImage>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QWheelEvent>
#include <QWidget>

namespace {

const char description[] =
    "<Widget><Rect x=\"0\" y=\"0\" width=\"120\" height=\"60\"/>"
    "<AddressList><Address prmAddr=\"Ch/A\"/><Address prmAddr=\"Ch/B\"/>"
    "<Address prmAddr=\"Ch/C\"/><Address prmAddr=\"Ch/D\"/></AddressList>"
    "<StepCount>7</StepCount><Value steps=\"8\">3</Value></Widget>";

void send(QWidget *w, QEvent *e)
{
    QApplication::sendEvent(w, e);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    Fuzz::ensureApplication();
    static WidgetFactory factory;
    static const QStringList types = WidgetFactory::typeNames();
    static QDomDocument doc = [] {
        QDomDocument d;
        d.setContent(QByteArray(description));
        return d;
    }();

    const QStringList lines = QString::fromUtf8(Fuzz::bytes(data, size)).split(QLatin1Char('\n'));
    QString type = lines.value(0).trimmed();
    bool isIndex = false;
    const uint index = type.toUInt(&isIndex);
    if (isIndex || !types.contains(type))
        type = types.at(int((isIndex ? index : uint(qHash(type))) % uint(types.size())));

    Fuzz::Host host;
    ParameterManagementRegistry registry;
    QWidget page;
    page.resize(200, 100);
    IWidgetCore *core = factory.create(type, &page, &host, &registry);
    if (!core)
        return 0;
    QWidget *w = dynamic_cast<QWidget *>(core);
    core->configure(doc.documentElement());
    core->setZoom(1.0f);
    registry.commitAll();

    static const char *const addresses[] = {"Ch/A", "Ch/B", "Ch/C", "Ch/D"};
    for (int i = 1; i < lines.size() && i <= 16; ++i) {
        const QString device = QStringLiteral("dev1");
        const QString prm = QLatin1String(addresses[(i - 1) % 4]);
        const QString val = lines.at(i).section(QLatin1Char('\t'), 0, 0);
        const QString str = lines.at(i).section(QLatin1Char('\t'), 1);
        host.setParameter(device, prm, val, str);
        core->notifyValueChanged({{QStringLiteral("dev_uniq_id"), device}, {QStringLiteral("prmAddr"), prm},
                                  {QStringLiteral("zone_uniq_id"), QString()}});
    }
    if (!w)
        return 0;
    QImage image(200, 100, QImage::Format_ARGB32_Premultiplied);
    page.render(&image);

    for (int k : {Qt::Key_Up, Qt::Key_Down}) {
        QKeyEvent e(QEvent::KeyPress, k, Qt::NoModifier);
        send(w, &e);
    }
    QWheelEvent wheel(QPointF(10, 10), QPointF(w->mapToGlobal(QPoint(10, 10))), QPoint(), QPoint(0, 240), Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    send(w, &wheel);
    QMouseEvent press(QEvent::MouseButtonPress, QPointF(20, 20), QPointF(20, 20), Qt::LeftButton, Qt::LeftButton,
                      Qt::NoModifier);
    send(w, &press);
    QMouseEvent move(QEvent::MouseMove, QPointF(25, 5), QPointF(25, 5), Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    send(w, &move);
    QMouseEvent release(QEvent::MouseButtonRelease, QPointF(25, 5), QPointF(25, 5), Qt::LeftButton, Qt::NoButton,
                        Qt::NoModifier);
    send(w, &release);
    page.render(&image);
    return 0;
}
