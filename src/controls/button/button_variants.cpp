#include "button_variants.h"

#include "core/PanelTiles.h"
#include "core/Saturating.h"

#include "data/DevDescReader.h"
#include "data/ParameterKeys.h"

#include <QCoreApplication>
#include <QDialog>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

#include <cmath>
#include <limits>

// ---------------------------------------------------------------------------
// SelectButton

const TagTable &SelectButton::tags()
{
    static const TagTable table = TagTable::of<SelectButton>(&Button::tags(), {
        {"Value", &SelectButton::readValue},
        {"CanOff", TagTable::boolean("canOff").ignoringCase().settingOnlyTrue()},
    });
    return table;
}

void SelectButton::setSelectValue(int value)
{
    const qint16 v = qint16(qBound<int>(std::numeric_limits<qint16>::min(), value, std::numeric_limits<qint16>::max()));
    if (m_selectValue == v)
        return;
    m_selectValue = v;
    update();
}

void SelectButton::setStepCount(int steps)
{
    const qint16 s = qint16(qBound<int>(std::numeric_limits<qint16>::min(), steps, std::numeric_limits<qint16>::max()));
    if (m_stepCount == s)
        return;
    m_stepCount = s;
    update();
}

bool SelectButton::isOn() const
{
    if (m_stepCount <= 0 || addressCount() == 0 || !addressAt(0).isValid())
        return false;
    return hasPosition(0) && stepOfPosition(m_stepCount, 0) == m_selectValue;
}

void SelectButton::clickAction()
{
    // Without steps there is no position to send.
    if (m_stepCount <= 0)
        return;
    if (m_canOff && stepOfPosition(m_stepCount, 0) == m_selectValue)
        requestPosition(0, m_stepCount, 0, 0);
    else
        requestPosition(m_selectValue, m_stepCount, 0, 0);
}

bool SelectButton::readValue(const QDomElement &e)
{
    const QVariantMap editor = hostCore() ? hostCore()->editorInfo() : QVariantMap();
    const bool hinted = e.hasAttribute(QStringLiteral("hint"));
    if (hinted && editor.value(Key::editor_hint).toString() != e.attribute(QStringLiteral("hint")))
        return false;
    if (!hinted && m_valueFromHint)
        return false;

    QString text = e.text().trimmed();
    if (text == QLatin1String(Key::editor_info))
        text = editor.value(Key::editor_info).toString().trimmed();
    bool ok = false;
    int value = text.toInt(&ok);
    if (!ok)
        return false;
    if (e.hasAttribute(QStringLiteral("offset"))) {
        const int offset = e.attribute(QStringLiteral("offset")).toInt(&ok);
        if (!ok)
            return false;
        value = Saturating::add(value, offset);
    }
    int steps = m_stepCount;
    if (e.hasAttribute(QStringLiteral("steps"))) {
        steps = e.attribute(QStringLiteral("steps")).toInt(&ok);
        if (!ok || steps <= 0 || steps > std::numeric_limits<qint16>::max())
            return false;
    }
    if (value < std::numeric_limits<qint16>::min() || value > std::numeric_limits<qint16>::max())
        return false;
    setSelectValue(value);
    setStepCount(steps);
    m_valueFromHint = hinted;
    return true;
}

// ---------------------------------------------------------------------------
// Library store and recall

namespace {

QString libraryModel(const BaseWidget &w)
{
    QString model = w.addressAt(0).key(Key::dev_model);
    if (model.isEmpty())
        model = w.baseAddress().value(Key::dev_model).toString();
    if (model.isEmpty() && w.hostCore())
        model = w.hostCore()->ownerDevice(&w).value(Key::dev_model).toString();
    return model;
}

} // namespace

QString Library::extension(const BaseWidget &control)
{
    return speakerLibraryExtension(libraryModel(control));
}

QString Library::filter(const QString &extension, bool fir)
{
    const QString all = QCoreApplication::translate("Button", "All Files (*)");
    if (extension.isEmpty())
        return all;
    const QString kind = fir ? QCoreApplication::translate("Button", "FIR Library Files")
                             : QCoreApplication::translate("Button", "Library Files");
    return QStringLiteral("%1 (*.%2);;%3").arg(kind, extension, all);
}

QString Library::caption(Action action)
{
    return action == Action::Store ? QCoreApplication::translate("Button", "Store Library")
                                   : QCoreApplication::translate("Button", "Recall Library");
}

// ---------------------------------------------------------------------------
// EquivalentButton

int EquivalentButton::onCount(int *bound) const
{
    int on = 0;
    *bound = 0;
    for (int i = 0, n = ownAddressCount(); i < n; ++i) {
        if (!addressAt(i).isValid())
            continue;
        ++*bound;
        if (!isOff(i))
            ++on;
    }
    return on;
}

bool EquivalentButton::isOn() const
{
    int bound = 0;
    const int on = onCount(&bound);
    return bound > 0 && on == bound;
}

bool EquivalentButton::isMixed() const
{
    int bound = 0;
    const int on = onCount(&bound);
    return on > 0 && on < bound;
}

void EquivalentButton::clickAction()
{
    const int position = isOn() ? 0 : 1;
    for (int i = 0, n = ownAddressCount(); i < n; ++i)
        requestPosition(position, 1, 0, i);
}

void EquivalentButton::paintDecoration(QPainter &painter, int state)
{
    Q_UNUSED(state)
    if (!isMixed())
        return;
    // Half lit: a bar along the bottom edge.
    const int h = qMax(2, height() / 6);
    const int inset = qMax(2, Saturating::pixels(3, zoomFactor()));
    painter.fillRect(QRect(inset, height() - inset - h, width() - 2 * inset, h), litColor);
}

// ---------------------------------------------------------------------------
// Reset buttons

void ResetButton::clickAction()
{
    for (int i = 0, n = ownAddressCount(); i < n; ++i)
        requestDefault(i);
}

void TuningZoneMasterResetButton::clickAction()
{
    for (int i = 0, n = ownAddressCount(); i < n; ++i)
        requestDefault(i);
}

// ---------------------------------------------------------------------------
// MatchValueButton

const TagTable &MatchValueButton::tags()
{
    static const TagTable table = TagTable::of<MatchValueButton>(&Button::tags(), {
        {"MatchValue", TagTable::text("matchValue")},
    });
    return table;
}

void MatchValueButton::setMatchValue(const QString &value)
{
    if (m_matchValue == value)
        return;
    m_matchValue = value;
    update();
}

bool MatchValueButton::isOn() const
{
    if (m_matchValue.isEmpty())
        return Button::isOn();
    return addressCount() > 0 && addressAt(0).isValid() && displayText(0) == m_matchValue;
}

void MatchValueButton::clickAction()
{
    if (m_matchValue.isEmpty())
        Button::clickAction();
    else
        requestText(m_matchValue, 0);
}

// ---------------------------------------------------------------------------
// StepButton

const TagTable &StepButton::tags()
{
    static const TagTable table = TagTable::of<StepButton>(&Button::tags(), {
        {"Step", &StepButton::readStep},
    });
    return table;
}

void StepButton::setStep(int step)
{
    if (step == 0 || m_step == step)
        return;
    m_step = step;
    update();
}

void StepButton::clickAction()
{
    requestStep(m_step, 0);
}

bool StepButton::readStep(const QDomElement &e)
{
    bool ok = false;
    const int step = e.text().trimmed().toInt(&ok);
    if (!ok || step == 0)
        return false;
    setStep(step);
    return true;
}

QString StepButton::fallbackText() const
{
    return m_step > 0 ? QStringLiteral("+") : QString(QChar(0x2212));
}

// ---------------------------------------------------------------------------
// Blinking

namespace {
QPointer<BlinkController> blinkController;
}

BlinkController &BlinkController::instance()
{
    // Parented to the application so that its timer dies on the GUI thread.
    if (!blinkController)
        blinkController = new BlinkController(QCoreApplication::instance());
    return *blinkController;
}

BlinkController::BlinkController(QObject *parent)
    : QObject(parent)
{
    m_timer.setInterval(interval);
    connect(&m_timer, &QTimer::timeout, this, &BlinkController::toggle);
}

void BlinkController::add(BlinkButton *button)
{
    m_buttons.insert(button);
    if (!m_timer.isActive()) {
        // A new blink starts lit, in step with any later one.
        m_lit = true;
        m_timer.start();
    }
}

void BlinkController::remove(BlinkButton *button)
{
    m_buttons.remove(button);
    if (m_buttons.isEmpty())
        m_timer.stop();
}

void BlinkController::toggle()
{
    m_lit = !m_lit;
    for (BlinkButton *b : qAsConst(m_buttons))
        b->update();
}

BlinkButton::BlinkButton(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent)
    : Button(hostCore, registry, parent)
{
}

BlinkButton::~BlinkButton()
{
    if (m_blinking && blinkController)
        blinkController->remove(this);
}

void BlinkButton::updateBlinking()
{
    const bool blink = isOn();
    if (blink == m_blinking)
        return;
    m_blinking = blink;
    if (blink)
        BlinkController::instance().add(this);
    else
        BlinkController::instance().remove(this);
}

int BlinkButton::paintedState() const
{
    const int state = Button::paintedState();
    if (m_blinking && !BlinkController::instance().litPhase())
        return state & ~2;
    return state;
}

void BlinkButton::ownValueChanged(int index)
{
    if (index == 0)
        updateBlinking();
    Button::ownValueChanged(index);
}

void BlinkButton::addressRebound(int index)
{
    if (index == 0)
        updateBlinking();
    Button::addressRebound(index);
}

// ---------------------------------------------------------------------------
// ChangeEnableButton

const TagTable &ChangeEnableButton::tags()
{
    static const TagTable table = TagTable::of<ChangeEnableButton>(&Button::tags(), {
        {"Target", &ChangeEnableButton::readTarget},
    });
    return table;
}

bool ChangeEnableButton::readTarget(const QDomElement &e)
{
    const QString name = e.text().trimmed();
    if (name.isEmpty() || m_targets.contains(name))
        return false;
    m_targets.append(name);
    // Targets later in the description do not exist yet.
    QTimer::singleShot(0, this, &ChangeEnableButton::applyToTargets);
    return true;
}

void ChangeEnableButton::applyToTargets()
{
    if (m_targets.isEmpty() || addressCount() == 0 || !addressAt(0).isValid() || positionText(0).isEmpty())
        return;
    QWidget *panel = PanelTiles::pageOf(this);
    if (!panel)
        return;
    const bool enable = !isOff(0);
    const QList<QWidget *> widgets = panel->findChildren<QWidget *>();
    for (QWidget *w : widgets) {
        if (w == this)
            continue;
        QString name = w->objectName();
        if (auto *control = qobject_cast<BaseWidget *>(w)) {
            if (!control->widgetName().isEmpty())
                name = control->widgetName();
        }
        if (m_targets.contains(name))
            w->setEnabled(enable);
    }
}

void ChangeEnableButton::ownValueChanged(int index)
{
    if (index == 0)
        applyToTargets();
    Button::ownValueChanged(index);
}

void ChangeEnableButton::showEvent(QShowEvent *event)
{
    applyToTargets();
    Button::showEvent(event);
}

// ---------------------------------------------------------------------------
// TapTempoButton

TapTempoButton::TapTempoButton(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent)
    : Button(hostCore, registry, parent)
{
    m_clock.start();
    m_timer.setSingleShot(true);
    m_timer.setInterval(resetInterval);
    // A coarse timer may fire up to 5 % early: the 3.2 s pause must be exact.
    m_timer.setTimerType(Qt::PreciseTimer);
    connect(&m_timer, &QTimer::timeout, this, &TapTempoButton::resetTaps);
}

qint64 TapTempoButton::now() const
{
    return m_clock.elapsed();
}

QString TapTempoButton::intervalText() const
{
    QStringList parts;
    for (int i : m_intervals)
        parts.append(QString::number(i));
    return parts.join(QLatin1Char(','));
}

QString TapTempoButton::tempoText(const QList<int> &intervals, int *bpm)
{
    double sum = 0;
    for (int i : intervals)
        sum += i;
    const double average = intervals.isEmpty() ? 0.0 : sum / intervals.size();
    const int beats = average > 0 && std::isfinite(average) ? int(60000.0 / average) : 0;
    if (bpm)
        *bpm = beats;
    return QString::asprintf("%.1f", double(beats));
}

void TapTempoButton::tap()
{
    const qint64 t = now();
    if (m_tapCount > 0) {
        m_intervals.append(int(qMin<qint64>(t - m_lastTap, std::numeric_limits<int>::max())));
        while (m_intervals.size() > keptIntervals)
            m_intervals.removeFirst();
    }
    m_lastTap = t;
    if (m_tapCount++ == 0)
        update(); // lit while measuring
    m_timer.start();
    if (!m_intervals.isEmpty())
        requestText(tempoText(m_intervals, &m_bpm), 0);
}

void TapTempoButton::resetTaps()
{
    m_timer.stop();
    if (m_tapCount == 0 && m_intervals.isEmpty())
        return;
    m_tapCount = 0;
    m_intervals.clear();
    update();
}

void TapTempoButton::mousePressEvent(QMouseEvent *event)
{
    Button::mousePressEvent(event);
    if (event->button() == Qt::LeftButton && !(event->modifiers() & Qt::ControlModifier) && isVisible()
        && canOperate())
        tap();
}

void TapTempoButton::keyPressEvent(QKeyEvent *event)
{
    if (event->key() != Qt::Key_Return || event->isAutoRepeat() || !isVisible() || !canOperate()) {
        BaseWidget::keyPressEvent(event);
        return;
    }
    setPressed(true);
    tap();
}

void TapTempoButton::keyReleaseEvent(QKeyEvent *event)
{
    if (event->key() != Qt::Key_Return || event->isAutoRepeat() || !isPressed()) {
        BaseWidget::keyReleaseEvent(event);
        return;
    }
    setPressed(false);
}

// ---------------------------------------------------------------------------
// ReturnButton

const TagTable &ReturnButton::tags()
{
    static const TagTable table = TagTable::of<ReturnButton>(&Button::tags(), {
        {"ReturnValue", TagTable::integer("returnValue")},
    });
    return table;
}

void ReturnButton::clickAction()
{
    passToHost(m_returnValue);
    if (auto *dialog = qobject_cast<QDialog *>(window()))
        dialog->done(m_returnValue);
}

// ---------------------------------------------------------------------------
// ParentPanelButton

void ParentPanelButton::clickAction()
{
    QWidget *w = window();
    if (w != this && WindowButton::isEditorWindow(w))
        w->close();
}
