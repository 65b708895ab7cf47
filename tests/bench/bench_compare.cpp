#include "plugin/WidgetFactory.h"

#include "PanelFactory.h"
#include "PanelHost.h"
#include "ParameterDatabase.h"
#include "support/RecordingHost.h"

#include <corvane/IPanelFactory.h>
#include <corvane/IWidgetCore.h>
#include <corvane/ParameterManagement.h>

#include <QApplication>
#include <QBuffer>
#include <QDial>
#include <QDir>
#include <QDomDocument>
#include <QElapsedTimer>
#include <QImage>
#include <QLineEdit>
#include <QPluginLoader>
#include <QProgressBar>
#include <QPushButton>
#include <QSlider>
#include <QTextStream>
#include <QUiLoader>
#include <QWindow>

#include <qwt_knob.h>
#include <qwt_slider.h>
#include <qwt_thermo.h>

#include <malloc.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <memory>

/*
    The library side by side with the widgets a host could use instead:
    QUiLoader reading an equivalent .ui file, the same stock widgets built
    directly, and Qwt's knob, slider and thermometer. Every step runs all
    contenders in turn, repetition after repetition, and keeps the best
    time of each, so that load on the machine hurts all of them alike.

    The layout mixes number boxes, dials, faders, buttons and meters, each
    bound to its own parameter of the bundled Vela8 model (one device per
    forty controls), laid out on a grid without overlaps.

    Usage: bench_compare [--reps R] [--sizes 100,1000,10000]
                         [--steps build,meters,delivery,host]
*/

namespace {

QTextStream out(stdout);

enum Kind { NumberBoxKind, DialKind, FaderKind, ButtonKind, MeterKind, KindCount };

const char *const libraryTypes[KindCount] = {"NumberBox", "Dial", "Fader", "Button", "Meter"};
const char *const addressForms[KindCount] = {"Ch%1/HA/Gain", "Ch%1/Pan", "Ch%1/Fader", "Ch%1/Mute",
                                             "Meter:Ch%1/Level"};
const QSize kindSizes[KindCount] = {{40, 18}, {20, 20}, {16, 20}, {40, 18}, {8, 20}};
const QSize cell(44, 22);

struct Slot
{
    Kind kind;
    QRect rect;
    QString device;
    QString prmAddr;
};

QVector<Slot> layoutOf(int n)
{
    const int columns = qMax(1, int(std::ceil(std::sqrt(n * double(cell.height()) / cell.width()))));
    QVector<Slot> places;
    places.reserve(n);
    for (int i = 0; i < n; ++i) {
        const auto kind = Kind(i % KindCount);
        const int group = i / KindCount;
        Slot s;
        s.kind = kind;
        s.rect = QRect(QPoint((i % columns) * cell.width(), (i / columns) * cell.height()), kindSizes[kind]);
        s.device = QStringLiteral("vela8-%1").arg(group / 8 + 1);
        s.prmAddr = QString::fromLatin1(addressForms[kind]).arg(group % 8 + 1);
        places.append(s);
    }
    return places;
}

QSize extentOf(const QVector<Slot> &places)
{
    QRect r;
    for (const Slot &s : places)
        r |= s.rect;
    return r.size();
}

QByteArray panelXml(const QVector<Slot> &places)
{
    QString xml;
    QTextStream s(&xml);
    const QSize size = extentOf(places);
    s << "<Panel width=\"" << size.width() << "\" height=\"" << size.height() << "\">\n";
    QStringList devices;
    for (const Slot &slot : places) {
        if (devices.isEmpty() || devices.last() != slot.device)
            devices << slot.device;
    }
    for (const QString &d : devices)
        s << "<Device id=\"" << d << "\" model=\"Vela8\"/>\n";
    for (int i = 0; i < places.size(); ++i) {
        const Slot &slot = places.at(i);
        s << "<Widget type=\"" << libraryTypes[slot.kind] << "\" name=\"c" << i << "\"><Rect x=\"" << slot.rect.x()
          << "\" y=\"" << slot.rect.y() << "\" width=\"" << slot.rect.width() << "\" height=\"" << slot.rect.height()
          << "\"/><Address prmAddr=\"" << slot.prmAddr << "\" dev_uniq_id=\"" << slot.device << "\"/>";
        if (slot.kind == MeterKind)
            s << "<BuiltInBar>true</BuiltInBar>";
        s << "</Widget>\n";
    }
    s << "</Panel>\n";
    s.flush();
    return xml.toUtf8();
}

QByteArray uiXml(const QVector<Slot> &places)
{
    QString xml;
    QTextStream s(&xml);
    const QSize size = extentOf(places);
    auto geometry = [&](const QRect &r) {
        s << "<property name=\"geometry\"><rect><x>" << r.x() << "</x><y>" << r.y() << "</y><width>" << r.width()
          << "</width><height>" << r.height() << "</height></rect></property>";
    };
    s << "<ui version=\"4.0\"><class>Panel</class><widget class=\"QWidget\" name=\"Panel\">";
    geometry(QRect(QPoint(0, 0), size));
    static const char *const classes[KindCount] = {"QLineEdit", "QDial", "QSlider", "QPushButton", "QProgressBar"};
    for (int i = 0; i < places.size(); ++i) {
        const Slot &slot = places.at(i);
        s << "<widget class=\"" << classes[slot.kind] << "\" name=\"c" << i << "\">";
        geometry(slot.rect);
        switch (slot.kind) {
        case NumberBoxKind:
            s << "<property name=\"text\"><string>-6.0 dB</string></property>";
            break;
        case DialKind:
            s << "<property name=\"value\"><number>50</number></property>";
            break;
        case FaderKind:
            s << "<property name=\"orientation\"><enum>Qt::Vertical</enum></property>"
                 "<property name=\"value\"><number>50</number></property>";
            break;
        case ButtonKind:
            s << "<property name=\"text\"><string>Mute</string></property>"
                 "<property name=\"checkable\"><bool>true</bool></property>";
            break;
        case MeterKind:
            s << "<property name=\"orientation\"><enum>Qt::Vertical</enum></property>"
                 "<property name=\"value\"><number>50</number></property>"
                 "<property name=\"textVisible\"><bool>false</bool></property>";
            break;
        case KindCount:
            break;
        }
        s << "</widget>";
    }
    s << "</widget></ui>\n";
    s.flush();
    return xml.toUtf8();
}

// The same layout built directly from stock widgets, or with Qwt's knob,
// slider and thermometer where it has them.
QWidget *buildDirect(const QVector<Slot> &places, bool qwt)
{
    auto *page = new QWidget;
    page->resize(extentOf(places));
    for (int i = 0; i < places.size(); ++i) {
        const Slot &slot = places.at(i);
        QWidget *w = nullptr;
        switch (slot.kind) {
        case NumberBoxKind: {
            auto *e = new QLineEdit(page);
            e->setText(QStringLiteral("-6.0 dB"));
            w = e;
            break;
        }
        case DialKind:
            if (qwt) {
                auto *k = new QwtKnob(page);
                k->setScale(0, 100);
                k->setValue(50);
                w = k;
            } else {
                auto *d = new QDial(page);
                d->setValue(50);
                w = d;
            }
            break;
        case FaderKind:
            if (qwt) {
                auto *f = new QwtSlider(Qt::Vertical, page);
                f->setScale(0, 100);
                f->setValue(50);
                w = f;
            } else {
                auto *f = new QSlider(Qt::Vertical, page);
                f->setValue(50);
                w = f;
            }
            break;
        case ButtonKind: {
            auto *b = new QPushButton(QStringLiteral("Mute"), page);
            b->setCheckable(true);
            w = b;
            break;
        }
        case MeterKind:
            if (qwt) {
                auto *t = new QwtThermo(page);
                t->setScalePosition(QwtThermo::NoScale);
                t->setScale(0, 100);
                t->setValue(50);
                w = t;
            } else {
                auto *p = new QProgressBar(page);
                p->setOrientation(Qt::Vertical);
                p->setTextVisible(false);
                p->setValue(50);
                w = p;
            }
            break;
        case KindCount:
            break;
        }
        w->setObjectName(QStringLiteral("c%1").arg(i));
        w->setGeometry(slot.rect);
    }
    return page;
}

// The same layout of bare QWidgets: what any widget costs, the floor
// under every contender.
QWidget *buildBare(const QVector<Slot> &places)
{
    auto *page = new QWidget;
    page->resize(extentOf(places));
    for (int i = 0; i < places.size(); ++i) {
        auto *w = new QWidget(page);
        w->setObjectName(QStringLiteral("c%1").arg(i));
        w->setGeometry(places.at(i).rect);
    }
    return page;
}

// The same layout of QWidgets that fill their rectangle with one colour
// and nothing else: the least any widget repainted by Qt costs on a shown
// window, whatever it draws. Large pages group them in the way panelview
// groups controls into tiles, so that the floor also shows what a repaint
// costs on a page that size once the walk over siblings is kept short.
QWidget *buildFloor(const QVector<Slot> &places)
{
    auto *page = new QWidget;
    page->resize(extentOf(places));
    const bool grouped = places.size() > PanelFactory::tiledAbove;
    // Groups close where tiles do.
    QVector<int> firsts{0};
    QRect area;
    for (int i = 0; grouped && i < places.size(); ++i) {
        const QRect r = places.at(i).rect;
        if (PanelFactory::closesTile(i - firsts.last(), area, r)) {
            firsts.append(i);
            area = QRect();
        }
        area |= r;
    }
    firsts.append(places.size());
    for (int g = 0; g + 1 < firsts.size(); ++g) {
        QRect around;
        for (int i = firsts.at(g); i < firsts.at(g + 1); ++i)
            around |= places.at(i).rect;
        QWidget *parent = page;
        if (grouped) {
            parent = new QWidget(page);
            parent->setGeometry(around);
        }
        for (int i = firsts.at(g); i < firsts.at(g + 1); ++i) {
            auto *w = new QWidget(parent);
            w->setObjectName(QStringLiteral("c%1").arg(i));
            w->setGeometry(places.at(i).rect.translated(-parent->pos()));
            w->setAutoFillBackground(true);
        }
    }
    return page;
}

QList<QWidget *> floorWidgetsOf(QWidget *page)
{
    QList<QWidget *> widgets;
    for (QWidget *w : page->findChildren<QWidget *>()) {
        if (w->autoFillBackground())
            widgets.append(w);
    }
    return widgets;
}

// Sets the value a stock or Qwt control shows to \a v (0 to 1); a floor
// widget is repainted.
void setAnchorValue(QWidget *w, double v)
{
    if (auto *t = qobject_cast<QwtThermo *>(w))
        t->setValue(100 * v);
    else if (auto *s = qobject_cast<QwtAbstractSlider *>(w))
        s->setValue(100 * v);
    else if (auto *p = qobject_cast<QProgressBar *>(w))
        p->setValue(int(100 * v));
    else if (auto *a = qobject_cast<QAbstractSlider *>(w))
        a->setValue(int(100 * v));
    else if (auto *e = qobject_cast<QLineEdit *>(w))
        e->setText(QString::number(-60 + 60 * v, 'f', 1));
    else if (auto *b = qobject_cast<QPushButton *>(w))
        b->setChecked(v >= 0.5);
    else
        w->update();
}

// Shows \a page and waits until the platform has exposed it, so that
// later updates really paint.
void showExposed(QWidget *page)
{
    page->show();
    QElapsedTimer t;
    t.start();
    while (!(page->windowHandle() && page->windowHandle()->isExposed()) && t.elapsed() < 5000)
        QApplication::processEvents(QEventLoop::AllEvents, 50);
    QApplication::processEvents();
}

// Counts the paint events of the controls, to tell a frame that painted
// from one that did nothing. The window's own background paints are left
// out, and so are those of the panel factory's tiles: they say nothing
// about whether a control changed visibly.
class PaintCount : public QObject
{
public:
    bool eventFilter(QObject *o, QEvent *e) override
    {
        if (e->type() == QEvent::Paint && o->isWidgetType() && !static_cast<QWidget *>(o)->isWindow()
            && !o->inherits("PanelTile"))
            ++paints;
        return false;
    }
    qint64 paints = 0;
};

size_t heapInUse()
{
    return mallinfo2().uordblks;
}

// Best of the repetitions, per contender.
class Best
{
public:
    void add(const QString &name, double value)
    {
        auto it = m_values.find(name);
        if (it == m_values.end())
            m_values.insert(name, value);
        else
            *it = qMin(*it, value);
    }
    double operator[](const QString &name) const { return m_values.value(name, std::nan("")); }

private:
    QHash<QString, double> m_values;
};

struct Environment
{
    QUiLoader uiLoader;
    WidgetFactory widgetFactory;
    IPanelFactory *panelFactory = nullptr;
    ParameterDatabase *database = nullptr;
};

// A host with the panel's devices declared, its panel built.
std::unique_ptr<PanelHost> libraryHost(Environment &env, const QByteArray &xml, bool build)
{
    auto host = std::make_unique<PanelHost>(env.database);
    QString error;
    if (!host->load(xml, QStringLiteral("bench.xml"), &error) || (build && !host->build(env.panelFactory, &error)))
        qFatal("cannot build the panel: %s", qPrintable(error));
    return host;
}

QVariantMap addressOf(const Slot &slot)
{
    return {{QStringLiteral("dev_uniq_id"), slot.device}, {QStringLiteral("prmAddr"), slot.prmAddr}};
}

// Stores a new position and text for \a slot without telling the host.
void storeQuietly(Environment &env, PanelHost *host, const Slot &slot, double v)
{
    env.database->setObserver(nullptr);
    env.database->store(addressOf(slot), {{QStringLiteral("ui_prm_val"), QString::number(v, 'g', 6)},
                                          {QStringLiteral("ui_prm_str"), QString::number(-60 + 60 * v, 'f', 1)}});
    env.database->setObserver(host);
}

double ratio(double a, double b)
{
    return b > 0 ? a / b : std::nan("");
}

QString fmt(double v, int precision = 2)
{
    return std::isnan(v) ? QStringLiteral("-") : QString::number(v, 'f', precision);
}

void row(const QString &step, const QString &library, const QString &anchors, const QString &ratios)
{
    out << "| " << step << " | " << library << " | " << anchors << " | " << ratios << " |\n";
    out.flush();
}

// Build and heap per control, at one size.
void buildStep(Environment &env, int n, int reps)
{
    const QVector<Slot> places = layoutOf(n);
    const QByteArray xml = panelXml(places);
    const QByteArray ui = uiXml(places);
    auto host = libraryHost(env, xml, false);
    Best time, heap;
    for (int r = 0; r < reps; ++r) {
        QElapsedTimer t;
        {
            size_t before = heapInUse();
            t.start();
            QDomDocument doc;
            doc.setContent(xml);
            const qint64 parsed = t.nsecsElapsed();
            const size_t afterParse = heapInUse();
            QWidget *page = env.panelFactory->createPanel(doc.documentElement(), nullptr, host.get(), host->registry(), {});
            host->registry()->commitAll();
            const qint64 total = t.nsecsElapsed();
            heap.add("library", double(heapInUse() - afterParse) / n);
            heap.add("library+dom", double(heapInUse() - before) / n);
            time.add("library", (total - parsed) / 1e3 / n);
            time.add("library+dom", total / 1e3 / n);
            delete page;
            host->registry()->commitAll();
        }
        {
            QBuffer buffer;
            buffer.setData(ui);
            buffer.open(QIODevice::ReadOnly);
            const size_t before = heapInUse();
            t.start();
            QWidget *page = env.uiLoader.load(&buffer);
            const qint64 ns = t.nsecsElapsed();
            heap.add("uiloader", double(heapInUse() - before) / n);
            time.add("uiloader", ns / 1e3 / n);
            delete page;
        }
        for (bool qwt : {false, true}) {
            const size_t before = heapInUse();
            t.start();
            QWidget *page = buildDirect(places, qwt);
            const qint64 ns = t.nsecsElapsed();
            heap.add(qwt ? "qwt" : "stock", double(heapInUse() - before) / n);
            time.add(qwt ? "qwt" : "stock", ns / 1e3 / n);
            delete page;
        }
        {
            const size_t before = heapInUse();
            t.start();
            QWidget *page = buildBare(places);
            const qint64 ns = t.nsecsElapsed();
            heap.add("bare", double(heapInUse() - before) / n);
            time.add("bare", ns / 1e3 / n);
            delete page;
        }
    }
    row(QStringLiteral("build per control, N = %1").arg(n),
        QStringLiteral("%1 µs (%2 µs without DOM)").arg(fmt(time["library+dom"]), fmt(time["library"])),
        QStringLiteral("QUiLoader %1, stock %2, Qwt %3, bare QWidget %4")
            .arg(fmt(time["uiloader"]), fmt(time["stock"]), fmt(time["qwt"]), fmt(time["bare"])),
        QStringLiteral("%1 / %2 / %3 (without DOM: %4 / %5 / %6)")
            .arg(fmt(ratio(time["library+dom"], time["uiloader"])), fmt(ratio(time["library+dom"], time["stock"])),
                 fmt(ratio(time["library+dom"], time["qwt"])), fmt(ratio(time["library"], time["uiloader"])),
                 fmt(ratio(time["library"], time["stock"])), fmt(ratio(time["library"], time["qwt"]))));
    row(QStringLiteral("heap per control, N = %1").arg(n),
        QStringLiteral("%1 KB (%2 KB with DOM)").arg(fmt(heap["library"] / 1024), fmt(heap["library+dom"] / 1024)),
        QStringLiteral("QUiLoader %1, stock %2, Qwt %3, bare QWidget %4")
            .arg(fmt(heap["uiloader"] / 1024), fmt(heap["stock"] / 1024), fmt(heap["qwt"] / 1024),
                 fmt(heap["bare"] / 1024)),
        QStringLiteral("%1 / %2 / %3")
            .arg(fmt(ratio(heap["library"], heap["uiloader"])), fmt(ratio(heap["library"], heap["stock"])),
                 fmt(ratio(heap["library"], heap["qwt"]))));
}

// 512 meters, every one changed each frame: rendered into an image, or
// painted on a shown window.
void meterStep(Environment &env, int reps, bool shown)
{
    const int count = 512;
    const int frames = 20;
    QVector<Slot> places;
    for (int i = 0; i < count; ++i) {
        Slot s;
        s.kind = MeterKind;
        s.rect = QRect((i % 32) * 12, (i / 32) * 62, 10, 60);
        s.device = QStringLiteral("vela8-%1").arg(i / 8 + 1);
        s.prmAddr = QStringLiteral("Meter:Ch%1/Level").arg(i % 8 + 1);
        places.append(s);
    }
    auto host = libraryHost(env, panelXml(places), true);
    QWidget *library = host->panel();
    std::unique_ptr<QWidget> bars(buildDirect(places, false));
    std::unique_ptr<QWidget> thermos(buildDirect(places, true));
    std::unique_ptr<QWidget> floor(buildFloor(places));
    QList<QWidget *> pages{library, bars.get(), thermos.get(), floor.get()};
    for (QWidget *page : pages) {
        if (shown)
            showExposed(page);
    }
    QImage image(library->size(), QImage::Format_ARGB32_Premultiplied);
    // Every meter moves by 30 % or 60 % of its height each frame. Smaller
    // steps would not be fair: QProgressBar repaints only once its value
    // has moved by more than a chunk (9 pixels) since the last paint, so it
    // would skip most frames that the other meters paint.
    static const double levels[3] = {0.2, 0.5, 0.8};
    auto frame = [&](QWidget *page, const std::function<void(int, double)> &set, int k) {
        for (int i = 0; i < count; ++i)
            set(i, levels[(i + k) % 3]);
        if (shown)
            QApplication::processEvents();
        else
            page->render(&image);
    };
    // The panel factory groups this many controls into tiles.
    QList<QWidget *> meters;
    for (IWidgetCore *core : host->controls())
        meters.append(widgetOf(core));
    const QList<QWidget *> barWidgets = bars->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly);
    const QList<QWidget *> thermoWidgets = thermos->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly);
    const QList<QWidget *> floorWidgets = floorWidgetsOf(floor.get());
    // All start dark, as the library's meters do, so that every meter
    // changes in the first frame too.
    for (int i = 0; i < count; ++i) {
        setAnchorValue(barWidgets.at(i), 0);
        setAnchorValue(thermoWidgets.at(i), 0);
    }
    QApplication::processEvents();
    Best time;
    // Paint events of the meters on a shown window, per meter and frame:
    // 1 when every meter painted in every frame.
    PaintCount painted;
    if (shown)
        qApp->installEventFilter(&painted);
    auto paintsPerMeter = [&](const char *name) {
        time.add(name, double(painted.paints) / frames / count);
        painted.paints = 0;
    };
    int k = 0;
    for (int r = 0; r < reps; ++r) {
        QElapsedTimer t;
        painted.paints = 0;
        t.start();
        for (int f = 0; f < frames; ++f, ++k)
            frame(library, [&](int i, double v) {
                env.database->store(addressOf(places.at(i)), {{QStringLiteral("ui_prm_val"), QString::number(v)}});
            }, k);
        time.add("library", t.nsecsElapsed() / 1e3 / frames / count);
        paintsPerMeter("libraryPaints");
        // The painting alone: the lit height set directly, no host between.
        t.start();
        for (int f = 0; f < frames; ++f, ++k)
            frame(library, [&](int i, double v) { meters.at(i)->setProperty("level", int(60 * v + 0.5)); }, k);
        time.add("paintOnly", t.nsecsElapsed() / 1e3 / frames / count);
        paintsPerMeter("paintOnlyPaints");
        t.start();
        for (int f = 0; f < frames; ++f, ++k)
            frame(bars.get(), [&](int i, double v) { setAnchorValue(barWidgets.at(i), v); }, k);
        time.add("bars", t.nsecsElapsed() / 1e3 / frames / count);
        paintsPerMeter("barsPaints");
        t.start();
        for (int f = 0; f < frames; ++f, ++k)
            frame(thermos.get(), [&](int i, double v) { setAnchorValue(thermoWidgets.at(i), v); }, k);
        time.add("thermos", t.nsecsElapsed() / 1e3 / frames / count);
        paintsPerMeter("thermosPaints");
        t.start();
        for (int f = 0; f < frames; ++f, ++k)
            frame(floor.get(), [&](int i, double v) { setAnchorValue(floorWidgets.at(i), v); }, k);
        time.add("floor", t.nsecsElapsed() / 1e3 / frames / count);
        paintsPerMeter("floorPaints");
    }
    if (shown)
        qApp->removeEventFilter(&painted);
    const int lit = meters.first()->property("level").toInt();
    row(shown ? QStringLiteral("512 meters on a shown window, per meter and frame")
              : QStringLiteral("512 meters updated and rendered into one image, per meter"),
        QStringLiteral("%1 µs (%2 µs with the level set directly)").arg(fmt(time["library"]), fmt(time["paintOnly"])),
        QStringLiteral("QProgressBar %1, QwtThermo %2, a QWidget that only fills itself %3%4")
            .arg(fmt(time["bars"]), fmt(time["thermos"]), fmt(time["floor"]),
                 shown ? QStringLiteral(" (paint events per meter and frame: library %1 and %2, QProgressBar %3, "
                                        "QwtThermo %4, QWidget %5)")
                             .arg(fmt(time["libraryPaints"]), fmt(time["paintOnlyPaints"]), fmt(time["barsPaints"]),
                                  fmt(time["thermosPaints"]), fmt(time["floorPaints"]))
                       : QString()),
        QStringLiteral("%1 / %2 (level set directly: %3 / %4; the QWidget: %5 × QwtThermo)%6")
            .arg(fmt(ratio(time["library"], time["bars"])), fmt(ratio(time["library"], time["thermos"])),
                 fmt(ratio(time["paintOnly"], time["bars"])), fmt(ratio(time["paintOnly"], time["thermos"])),
                 fmt(ratio(time["floor"], time["thermos"])),
                 lit > 0 ? QString() : QStringLiteral(" (meters stayed dark!)")));
}

// A value delivered to one control that is not shown: through the registry
// alone, through panelview's host, and Qwt's setValue.
void deliveryStep(Environment &env, int reps)
{
    const int calls = 20000;
    const QVector<Slot> places = layoutOf(1000);
    auto host = libraryHost(env, panelXml(places), true);
    const Slot &slot = places.at(DialKind);
    const QVariantMap address = addressOf(slot);
    ParameterManagementBase *manager = host->registry()->manager(ParameterManagementRegistry::categoryOf(slot.prmAddr), slot.device);
    std::unique_ptr<QwtKnob> knob(new QwtKnob);
    knob->setScale(0, 100);

    // The same control answered by a host that keeps the texts ready, as a
    // design application's parameter cache does: the library's own cost.
    RecordingHost cache;
    ParameterManagementRegistry registry;
    QWidget parent;
    IWidgetCore *cached = env.widgetFactory.create(QStringLiteral("Dial"), &parent, &cache, &registry);
    QDomDocument doc;
    doc.setContent(QStringLiteral("<Widget><Rect x='0' y='0' width='20' height='20'/><Address prmAddr='%1' dev_uniq_id='%2'/></Widget>")
                       .arg(slot.prmAddr, slot.device));
    cached->configure(doc.documentElement());
    registry.commitAll();
    ParameterManagementBase *cachedManager = registry.manager(ParameterManagementRegistry::categoryOf(slot.prmAddr), slot.device);
    const QString positions[2] = {QStringLiteral("0.25"), QStringLiteral("0.75")};
    // What a host does with a change: tell every control registered for it.
    auto tell = [&](const ParameterManagementBase *m) {
        const ParameterManagementBase::Table table = m->registrations();
        for (auto it = table.constFind(slot.prmAddr); it != table.cend() && it.key() == slot.prmAddr; ++it)
            static_cast<IWidgetCore *>(it.value())->notifyValueChanged(address);
    };
    // Microseconds per delivery, the value changed before each one (outside
    // the time) by \a change, or left as it is when there is none.
    auto timed = [&](const ParameterManagementBase *m, const std::function<void(int)> &change) {
        QElapsedTimer t;
        qint64 ns = 0;
        for (int i = 0; i < calls; ++i) {
            if (change)
                change(i);
            t.start();
            tell(m);
            ns += t.nsecsElapsed();
        }
        return ns / 1e3 / calls;
    };
    Best time;
    for (int r = 0; r < reps; ++r) {
        time.add("registry", timed(manager, [&](int i) { storeQuietly(env, host.get(), slot, (i % 100) / 100.0); }));
        time.add("unchanged", timed(manager, nullptr));
        time.add("cached", timed(cachedManager, [&](int i) {
            cache.setParameter(slot.device, slot.prmAddr, positions[i % 2], positions[i % 2]);
        }));
        time.add("cachedUnchanged", timed(cachedManager, nullptr));
        QElapsedTimer t;
        t.start();
        for (int i = 0; i < calls; ++i)
            knob->setValue(i % 100);
        time.add("qwt", t.nsecsElapsed() / 1e3 / calls);
    }
    row(QStringLiteral("a value delivered through the registry, no painting, host answering from a cache"),
        QStringLiteral("%1 µs (%2/s); unchanged %3 µs").arg(fmt(time["cached"], 3)).arg(qRound(1 / time["cached"] * 1e6)).arg(fmt(time["cachedUnchanged"], 3)),
        QStringLiteral("Qwt setValue %1 µs").arg(fmt(time["qwt"], 3)),
        fmt(ratio(time["cached"], time["qwt"])));
    row(QStringLiteral("a value delivered through the registry, no painting, host reading the simulated database"),
        QStringLiteral("%1 µs (%2/s); unchanged %3 µs").arg(fmt(time["registry"], 3)).arg(qRound(1 / time["registry"] * 1e6)).arg(fmt(time["unchanged"], 3)),
        QStringLiteral("Qwt setValue %1 µs").arg(fmt(time["qwt"], 3)),
        fmt(ratio(time["registry"], time["qwt"])));
}

// panelview's own delivery of one change, and the painting of changed
// controls on a shown window, at one size.
void hostStep(Environment &env, int n, int reps, Best *deliveries, Best *paints)
{
    const int changes = 200;
    const int perFrame = 10;
    const QVector<Slot> places = layoutOf(n);
    auto host = libraryHost(env, panelXml(places), true);
    std::unique_ptr<QWidget> qwt(buildDirect(places, true));
    std::unique_ptr<QWidget> stock(buildDirect(places, false));
    std::unique_ptr<QWidget> floor(buildFloor(places));
    const QList<QWidget *> floorWidgets = floorWidgetsOf(floor.get());
    const QList<QWidget *> qwtWidgets = qwt->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly);
    const QList<QWidget *> stockWidgets = stock->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly);
    const QString key = QString::number(n);
    // Controls spread over the whole panel.
    auto target = [&](int i) { return int((qint64(i) * 7919) % n); };

    for (int r = 0; r < reps; ++r) {
        QElapsedTimer t;
        qint64 ns = 0;
        for (int i = 0; i < changes; ++i) {
            const Slot &slot = places.at(target(i));
            storeQuietly(env, host.get(), slot, (i % 50) / 50.0 + 0.01);
            t.start();
            host->deliver(addressOf(slot));
            ns += t.nsecsElapsed();
        }
        deliveries->add(key, ns / 1e3 / changes);
    }

    showExposed(host->panel());
    showExposed(qwt.get());
    showExposed(stock.get());
    showExposed(floor.get());
    PaintCount count;
    qApp->installEventFilter(&count);
    // Every visit moves a control between the ends of its range, so every
    // change is one, in every repetition. Nothing less would do: a
    // QProgressBar 20 pixels high repaints only at an end of its range or
    // after moving by more than half of it since it last painted.
    QVector<int> libraryVisits(n), qwtVisits(n), stockVisits(n), floorVisits(n);
    auto flip = [](QVector<int> &visits, int i) { return ++visits[i] % 2 ? 1.0 : 0.0; };
    // Every control starts at 0, so that the first visit changes it too.
    for (int i = 0; i < n; ++i) {
        env.database->store(addressOf(places.at(i)), {{QStringLiteral("ui_prm_val"), QStringLiteral("0")},
                                                      {QStringLiteral("ui_prm_str"), QStringLiteral("-60")}});
        setAnchorValue(qwtWidgets.at(i), 0);
        setAnchorValue(stockWidgets.at(i), 0);
    }
    QApplication::processEvents();
    count.paints = 0;
    int k = 0;
    for (int r = 0; r < reps; ++r) {
        QElapsedTimer t;
        t.start();
        for (int f = 0; f < changes / perFrame; ++f) {
            for (int i = 0; i < perFrame; ++i, ++k) {
                const double v = flip(libraryVisits, target(k));
                env.database->store(addressOf(places.at(target(k))),
                                    {{QStringLiteral("ui_prm_val"), QString::number(v)},
                                     {QStringLiteral("ui_prm_str"), QString::number(-60 + 60 * v)}});
            }
            QApplication::processEvents();
        }
        paints->add("library" + key, t.nsecsElapsed() / 1e3 / changes);
        paints->add("libraryPaints" + key, count.paints);
        count.paints = 0;
        const struct
        {
            const QList<QWidget *> &widgets;
            QVector<int> &visits;
            QString name;
        } sides[] = {{qwtWidgets, qwtVisits, QStringLiteral("qwt")},
                     {stockWidgets, stockVisits, QStringLiteral("stock")},
                     {floorWidgets, floorVisits, QStringLiteral("floor")}};
        for (const auto &side : sides) {
            t.start();
            for (int f = 0; f < changes / perFrame; ++f) {
                for (int i = 0; i < perFrame; ++i, ++k)
                    setAnchorValue(side.widgets.at(target(k)), flip(side.visits, target(k)));
                QApplication::processEvents();
            }
            paints->add(side.name + key, t.nsecsElapsed() / 1e3 / changes);
            paints->add(side.name + "Paints" + key, count.paints);
            count.paints = 0;
        }
    }
}

} // namespace

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    int reps = 7;
    QList<int> sizes{100, 1000, 10000};
    QStringList steps{QStringLiteral("build"), QStringLiteral("meters"), QStringLiteral("delivery"), QStringLiteral("host")};
    const QStringList args = app.arguments();
    for (int i = 1; i + 1 < args.size(); ++i) {
        if (args.at(i) == QLatin1String("--reps")) {
            reps = qBound(1, args.at(++i).toInt(), 100);
        } else if (args.at(i) == QLatin1String("--sizes")) {
            sizes.clear();
            for (const QString &s : args.at(++i).split(QLatin1Char(',')))
                sizes << qBound(1, s.toInt(), 10000);
        } else if (args.at(i) == QLatin1String("--steps")) {
            steps = args.at(++i).split(QLatin1Char(','));
        }
    }

    Environment env;
    env.database = ParameterDatabase::instance();
    QPluginLoader panelLoader(QDir(QCoreApplication::applicationDirPath()).filePath(QStringLiteral("libPanel.so")));
    QObject *panelObject = panelLoader.instance();
    env.panelFactory = qobject_cast<IPanelFactory *>(panelObject);
    if (!env.panelFactory) {
        qCritical("cannot load the panel factory: %s", qPrintable(panelLoader.errorString()));
        return 1;
    }
    QMetaObject::invokeMethod(panelObject, "setWidgetFactory", Qt::DirectConnection,
                              Q_ARG(QObject *, &env.widgetFactory));

    out << "Best of " << reps << "; ratios are this library's time or size over the anchor's.\n\n"
        << "| Step | This library | Anchors | Ratio |\n|---|---|---|---|\n";
    if (steps.contains(QLatin1String("build"))) {
        for (int n : sizes)
            buildStep(env, n, reps);
    }
    if (steps.contains(QLatin1String("meters"))) {
        meterStep(env, reps, false);
        meterStep(env, reps, true);
    }
    if (steps.contains(QLatin1String("delivery")))
        deliveryStep(env, reps);
    if (!steps.contains(QLatin1String("host")))
        return 0;

    Best deliveries, paints;
    for (int n : sizes)
        hostStep(env, n, reps, &deliveries, &paints);
    for (int n : sizes)
        row(QStringLiteral("panelview's delivery of one change, N = %1").arg(n),
            QStringLiteral("%1 µs").arg(fmt(deliveries[QString::number(n)])), QStringLiteral("-"),
            QStringLiteral("%1 × N = %2").arg(fmt(ratio(deliveries[QString::number(n)], deliveries[QString::number(sizes.first())])))
                .arg(sizes.first()));
    for (int n : sizes) {
        const QString key = QString::number(n);
        row(QStringLiteral("painting per changed control on a shown window, N = %1").arg(n),
            QStringLiteral("%1 µs (%2 × N = %3)")
                .arg(fmt(paints["library" + key]), fmt(ratio(paints["library" + key], paints["library" + QString::number(sizes.first())])))
                .arg(sizes.first()),
            QStringLiteral("Qwt %1, stock %2, a QWidget that only fills itself %3 (%4 × N = %5) (paint events per "
                           "run: library %6, Qwt %7, stock %8, QWidget %9)")
                .arg(fmt(paints["qwt" + key]), fmt(paints["stock" + key]), fmt(paints["floor" + key]),
                     fmt(ratio(paints["floor" + key], paints["floor" + QString::number(sizes.first())])))
                .arg(sizes.first())
                .arg(paints["libraryPaints" + key]).arg(paints["qwtPaints" + key]).arg(paints["stockPaints" + key])
                .arg(paints["floorPaints" + key]),
            QStringLiteral("%1 / %2").arg(fmt(ratio(paints["library" + key], paints["qwt" + key])),
                                         fmt(ratio(paints["library" + key], paints["stock" + key]))));
    }
    return 0;
}
