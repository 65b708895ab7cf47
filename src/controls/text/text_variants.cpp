#include "text_variants.h"

#include <QMouseEvent>
#include <QPainter>
#include <QRegExpValidator>

// ---------------------------------------------------------------------------

const TagTable &TitleText::tags()
{
    static const TagTable table = TagTable::of<TitleText>(&Text::tags(), {
        {"WithButton", TagTable::boolean("withButton")},
    });
    return table;
}

QRect TitleText::buttonRect() const
{
    if (!m_withButton)
        return QRect();
    const int side = qMax(0, height() - 4);
    return QRect(width() - side - 2, 2, side, side);
}

QRect TitleText::textRect() const
{
    QRect r = Text::textRect();
    if (m_withButton)
        r.setRight(buttonRect().left() - 3);
    return r;
}

void TitleText::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton && event->modifiers() == Qt::NoModifier
        && buttonRect().contains(event->pos())) {
        emit buttonClicked();
        return;
    }
    Text::mousePressEvent(event);
}

void TitleText::paintEvent(QPaintEvent *event)
{
    Text::paintEvent(event);
    if (!m_withButton)
        return;
    QPainter painter(this);
    const QRect r = buttonRect();
    painter.setPen(textColor());
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(r.adjusted(0, 0, -1, -1));
    // A small triangle pointing down: the section it heads can be opened.
    const int m = r.width() / 4;
    const QPolygon arrow({QPoint(r.left() + m, r.top() + m + 1), QPoint(r.right() - m, r.top() + m + 1),
                          QPoint(r.center().x(), r.bottom() - m)});
    painter.setBrush(textColor());
    painter.drawPolygon(arrow);
}

// ---------------------------------------------------------------------------

const char *const IPAddressTextBox::pattern =
    "(([1-9]?[0-9]|1[0-9]{2}|2[0-4][0-9]|25[0-5])\\.){3}([1-9]?[0-9]|1[0-9]{2}|2[0-4][0-9]|25[0-5])";

IPAddressTextBox::IPAddressTextBox(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent)
    : ParameterText(hostCore, registry, parent)
{
    setReadOnly(false);
}

void IPAddressTextBox::prepareEditor(LineEdit *editor)
{
    editor->setValidator(new QRegExpValidator(QRegExp(QLatin1String(pattern)), editor));
}

AsciiTextBox::AsciiTextBox(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent)
    : ParameterText(hostCore, registry, parent)
{
    setReadOnly(false);
}

void AsciiTextBox::prepareEditor(LineEdit *editor)
{
    editor->setValidator(new QRegExpValidator(QRegExp(QStringLiteral("[\\x20-\\x7e]*")), editor));
}

// ---------------------------------------------------------------------------

ValidateTextBox::ValidateTextBox(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent)
    : ParameterText(hostCore, registry, parent)
{
    setReadOnly(false);
}

const TagTable &ValidateTextBox::tags()
{
    static const TagTable table = TagTable::of<ValidateTextBox>(&ParameterText::tags(), {
        {"InputType", &ValidateTextBox::readInputType},
    });
    return table;
}

int ValidateTextBox::typeOf(const QString &inputType)
{
    if (inputType == QLatin1String("Number:4"))
        return 1;
    if (inputType == QLatin1String("Number:32"))
        return 2;
    if (inputType == QLatin1String("Alphabet+Number"))
        return 3;
    if (inputType == QLatin1String("IP+Alphabet+Number"))
        return 4;
    return 0;
}

QString ValidateTextBox::validatorPattern() const
{
    switch (m_type) {
    case 1: return QStringLiteral("[0-9]\\d{0,3}");
    case 2: return QStringLiteral("[0-9]\\d{0,31}");
    case 3: return QStringLiteral("^[A-Za-z0-9]+$");
    case 4: return QStringLiteral("^[A-Za-z0-9.]+$");
    default: return QString();
    }
}

bool ValidateTextBox::readInputType(const QDomElement &e)
{
    m_type = typeOf(e.text());
    applyValidator();
    return true;
}

void ValidateTextBox::applyValidator()
{
    if (LineEdit *e = editor())
        prepareEditor(e);
}

void ValidateTextBox::prepareEditor(LineEdit *editor)
{
    const QValidator *old = editor->validator();
    const QString p = validatorPattern();
    editor->setValidator(p.isEmpty() ? nullptr
                                     : new QRegExpValidator(QRegExp(p, Qt::CaseSensitive, QRegExp::RegExp), editor));
    delete old;
}
