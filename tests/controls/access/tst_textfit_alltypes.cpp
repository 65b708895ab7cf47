#include "controls/ControlTestHost.h"

#include "core/BaseWidget.h"
#include "plugin/WidgetFactory.h"

#include <QPaintEngine>
#include <QPainter>
#include <QTextItem>

/*
    Every control type, bound to parameters whose texts are far too long,
    painted at four zooms onto a device that records the text it is given:
    no text may run past the clip it is drawn in or past the control's edge,
    which is where characters get cut.
*/
namespace {

struct Cut
{
    QString text;
    QRectF drawn;
    QRectF limit;
};

class TextRecorder : public QPaintEngine
{
public:
    TextRecorder() : QPaintEngine(QPaintEngine::AllFeatures) { }
    bool begin(QPaintDevice *) override { return true; }
    bool end() override { return true; }
    void updateState(const QPaintEngineState &) override { }
    void drawPixmap(const QRectF &, const QPixmap &, const QRectF &) override { }
    void drawPolygon(const QPointF *, int, PolygonDrawMode) override { }
    void drawPath(const QPainterPath &) override { }
    Type type() const override { return QPaintEngine::User; }

    void drawTextItem(const QPointF &p, const QTextItem &item) override
    {
        const QString text = item.text();
        if (text.trimmed().isEmpty())
            return;
        const qreal width = item.width();
        const QRectF drawn(p.x(), p.y() - item.ascent(), width, item.ascent() + item.descent());
        QPainter *pt = painter();
        const QTransform toLogical = pt->transform().inverted();
        // The control's own rectangle, in the painter's coordinates.
        QRectF limit = toLogical.mapRect(QRectF(QPointF(0, 0), QSizeF(deviceSize)));
        if (pt->hasClipping())
            limit &= pt->clipBoundingRect();
        // Half a pixel for antialiased edges; only the horizontal extent cuts characters.
        if (drawn.left() < limit.left() - 0.5 || drawn.right() > limit.right() + 0.5)
            cuts.append({text, drawn, limit});
    }

    QSize deviceSize;
    QList<Cut> cuts;
};

class RecordingDevice : public QPaintDevice
{
public:
    explicit RecordingDevice(const QSize &size) : m_size(size) { m_engine.deviceSize = size; }
    QPaintEngine *paintEngine() const override { return &m_engine; }
    QList<Cut> cuts() const { return m_engine.cuts; }

protected:
    int metric(PaintDeviceMetric metric) const override
    {
        switch (metric) {
        case PdmWidth: return m_size.width();
        case PdmHeight: return m_size.height();
        case PdmWidthMM: return m_size.width() * 254 / 960;
        case PdmHeightMM: return m_size.height() * 254 / 960;
        case PdmNumColors: return INT_MAX;
        case PdmDepth: return 32;
        case PdmDpiX: case PdmDpiY: case PdmPhysicalDpiX: case PdmPhysicalDpiY: return 96;
        case PdmDevicePixelRatio: return 1;
        case PdmDevicePixelRatioScaled: return int(QPaintDevice::devicePixelRatioFScale());
        }
        return 0;
    }

private:
    QSize m_size;
    mutable TextRecorder m_engine;
};

// Answers every parameter with a text no small control can show whole.
class LongTextHost : public ControlTestHost
{
public:
    bool readParameter(const ParameterAddress &address, Value &value, QMap<QString, QString> &) override
    {
        value.set(QStringLiteral("ui_prm_val"), QStringLiteral("0.5"));
        value.set(QStringLiteral("ui_prm_str"),
                  QStringLiteral("+10.000 ms / 3.430 m %1").arg(address.prmAddr().section(QLatin1Char('/'), -1)));
        return true;
    }
};

const char *const description =
    "<Rect x='4' y='4' width='48' height='18'/>"
    "<Address prmAddr='Ch1/Networking/LongParameterName'/>"
    "<Text>Networking and remote control</Text>"
    "<OnText>Networking and remote control on</OnText>"
    "<Items><Item value='0'>Networking</Item><Item value='1'>Analogue inputs</Item></Items>"
    "<ValueTextList>Networking interface,Analogue inputs</ValueTextList>"
    "<Marks>-144,-60,+24,+100</Marks>";

} // namespace

class tst_TextFitAllTypes : public QObject
{
    Q_OBJECT

private slots:
    void noTextCut_data()
    {
        QTest::addColumn<float>("zoom");
        for (float zoom : {0.75f, 1.0f, 1.5f, 2.0f})
            QTest::addRow("zoom %g", double(zoom)) << zoom;
    }

    void noTextCut()
    {
        QFETCH(float, zoom);
        LongTextHost host;
        host.zoom = zoom;
        QWidget window;
        window.resize(400, 300);
        WidgetFactory factory;
        QStringList failures;
        int painted = 0;
        for (const QString &type : WidgetFactory::typeNames()) {
            IWidgetCore *core = factory.create(type, &window, &host, &host.registry);
            auto *w = dynamic_cast<BaseWidget *>(core);
            QVERIFY2(w, qPrintable(type));
            QDomDocument doc;
            doc.setContent(QStringLiteral("<Widget>%1</Widget>").arg(QLatin1String(description)));
            w->configure(doc.documentElement());
            w->setZoom(zoom);
            host.registry.commitAll();
            if (w->width() > 0 && w->height() > 0) {
                RecordingDevice device(w->size());
                w->render(&device, QPoint(), QRegion(), QWidget::DrawChildren);
                ++painted;
                for (const Cut &cut : device.cuts()) {
                    failures << QStringLiteral("%1: \"%2\" drawn over %3..%4, room %5..%6")
                                    .arg(type, cut.text)
                                    .arg(cut.drawn.left())
                                    .arg(cut.drawn.right())
                                    .arg(cut.limit.left())
                                    .arg(cut.limit.right());
                }
            }
            delete w;
        }
        QVERIFY(painted > 200);
        QVERIFY2(failures.isEmpty(), qPrintable(failures.join(QLatin1Char('\n'))));
    }
};

QTEST_MAIN(tst_TextFitAllTypes)
#include "tst_textfit_alltypes.moc"
