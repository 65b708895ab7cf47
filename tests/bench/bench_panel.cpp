#include "core/BaseWidget.h"
#include "plugin/WidgetFactory.h"

#include <corvane/IWidgetCore.h>
#include <corvane/ParameterManagement.h>
#include "support/RecordingHost.h"

#include <QDomDocument>
#include <QImage>
#include <QtTest>

/*
    What a busy panel costs: building controls, delivering parameter
    changes, painting. Run with scripts/bench (or the binary's -callgrind
    option for instruction counts that do not depend on the machine's load).
*/
class bench_Panel : public QObject
{
    Q_OBJECT

private slots:
    void createEveryType();
    void lookUpTags();
    void buildNumberBoxes();
    void deliverChange();
    void deliverUnchanged();
    void paintNumberBox();
};

namespace {

QDomElement widgetElement(const QString &prmAddr)
{
    static QDomDocument doc;
    doc.setContent(QStringLiteral("<Widget><Rect x='0' y='0' width='60' height='18'/>"
                                  "<Address prmAddr='%1'/><FontSize>9</FontSize></Widget>").arg(prmAddr));
    return doc.documentElement();
}

} // namespace

void bench_Panel::createEveryType()
{
    WidgetFactory factory;
    RecordingHost host;
    ParameterManagementRegistry registry;
    const QStringList names = WidgetFactory::typeNames();
    QBENCHMARK {
        QWidget parent;
        for (const QString &name : names)
            factory.create(name, &parent, &host, &registry);
    }
}

// Every tag of every type, and one no table has, looked up in the type's table.
void bench_Panel::lookUpTags()
{
    WidgetFactory factory;
    RecordingHost host;
    ParameterManagementRegistry registry;
    QWidget parent;
    QVector<QPair<const TagTable *, QStringList>> lookups;
    for (const QString &name : WidgetFactory::typeNames()) {
        auto *w = dynamic_cast<BaseWidget *>(factory.create(name, &parent, &host, &registry));
        lookups.append({&w->tagTable(), w->handledTags() << QStringLiteral("NoSuchTag")});
    }
    int found = 0;
    QBENCHMARK {
        for (const auto &lookup : qAsConst(lookups)) {
            for (const QString &tag : lookup.second)
                found += lookup.first->find(tag) != nullptr;
        }
    }
    QVERIFY(found > 0);
}

void bench_Panel::buildNumberBoxes()
{
    WidgetFactory factory;
    RecordingHost host;
    for (int i = 0; i < 100; ++i)
        host.setParameter("dev1", QStringLiteral("Ch%1/Gain").arg(i), "0.5", "-6.0 dB");
    QBENCHMARK {
        ParameterManagementRegistry registry;
        QWidget parent;
        for (int i = 0; i < 100; ++i) {
            IWidgetCore *core = factory.create("NumberBox", &parent, &host, &registry);
            core->configure(widgetElement(QStringLiteral("Ch%1/Gain").arg(i)));
            core->setZoom(1.0f);
        }
        registry.commitAll();
    }
}

void bench_Panel::deliverChange()
{
    WidgetFactory factory;
    RecordingHost host;
    ParameterManagementRegistry registry;
    QWidget parent;
    IWidgetCore *core = factory.create("NumberBox", &parent, &host, &registry);
    core->configure(widgetElement("Ch1/Gain"));
    const QVariantMap changed{{"prmAddr", "Ch1/Gain"}, {"dev_uniq_id", "dev1"}};
    int step = 0;
    QBENCHMARK {
        host.setParameter("dev1", "Ch1/Gain", QString::number(++step % 300 / 300.0), QString::number(step));
        core->notifyValueChanged(changed);
    }
}

void bench_Panel::deliverUnchanged()
{
    WidgetFactory factory;
    RecordingHost host;
    ParameterManagementRegistry registry;
    QWidget parent;
    host.setParameter("dev1", "Ch1/Gain", "0.5", "-6.0 dB");
    IWidgetCore *core = factory.create("NumberBox", &parent, &host, &registry);
    core->configure(widgetElement("Ch1/Gain"));
    const QVariantMap changed{{"prmAddr", "Ch1/Gain"}, {"dev_uniq_id", "dev1"}};
    QBENCHMARK {
        core->notifyValueChanged(changed);
    }
}

void bench_Panel::paintNumberBox()
{
    WidgetFactory factory;
    RecordingHost host;
    host.setParameter("dev1", "Ch1/Gain", "0.5", "-6.0 dB");
    QWidget parent;
    IWidgetCore *core = factory.create("NumberBox", &parent, &host, nullptr);
    core->configure(widgetElement("Ch1/Gain"));
    QWidget *w = widgetOf(core);
    QImage image(w->size(), QImage::Format_ARGB32_Premultiplied);
    QBENCHMARK {
        w->render(&image);
    }
}

QTEST_MAIN(bench_Panel)
#include "bench_panel.moc"
