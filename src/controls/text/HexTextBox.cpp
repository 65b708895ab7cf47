#include "HexTextBox.h"

#include <QKeyEvent>
#include <QMimeData>
#include <QTextBlock>

namespace {

bool isHexDigit(QChar c)
{
    return (c >= QLatin1Char('0') && c <= QLatin1Char('9')) || (c >= QLatin1Char('a') && c <= QLatin1Char('f'))
        || (c >= QLatin1Char('A') && c <= QLatin1Char('F'));
}

} // namespace

HexEdit::HexEdit(HexTextBox *owner, QWidget *parent)
    : QPlainTextEdit(parent)
    , m_owner(owner)
{
    setFrameShape(QFrame::NoFrame);
    setLineWrapMode(QPlainTextEdit::WidgetWidth);
    setWordWrapMode(QTextOption::WrapAnywhere);
    setContextMenuPolicy(Qt::NoContextMenu);
    setAttribute(Qt::WA_InputMethodEnabled, false);
}

bool HexEdit::mayAppendCells(int count) const
{
    const int limit = m_owner->maxLength();
    return limit <= 0 || toPlainText().size() + 3 * count <= 3 * limit;
}

bool HexEdit::typeDigit(QChar digit)
{
    QString text = toPlainText();
    int pos = textCursor().position();
    if (pos % 3 == 2)
        ++pos;
    digit = digit.toLower();
    if (pos < text.size()) {
        text[pos] = digit;
        ++pos;
    } else {
        if (!mayAppendCells(1))
            return false;
        pos = text.size() - text.size() % 3;
        text = text.left(pos) + digit + QLatin1String("0 ");
        ++pos;
    }
    if (pos % 3 == 2 && pos < text.size())
        ++pos;
    setPlainText(text);
    QTextCursor c = textCursor();
    c.setPosition(qMin(pos, text.size()));
    setTextCursor(c);
    return true;
}

void HexEdit::removeCell(int cell)
{
    QString text = toPlainText();
    if (cell < 0 || cell * 3 >= text.size())
        return;
    text.remove(cell * 3, 3);
    setPlainText(text);
    QTextCursor c = textCursor();
    c.setPosition(qMin(cell * 3, text.size()));
    setTextCursor(c);
}

void HexEdit::keyPressEvent(QKeyEvent *event)
{
    const int pos = textCursor().position();
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        m_owner->commit();
        return;
    case Qt::Key_Backspace:
        if (!m_owner->isReadOnly())
            removeCell(pos % 3 == 0 ? pos / 3 - 1 : pos / 3);
        return;
    case Qt::Key_Delete:
        if (!m_owner->isReadOnly())
            removeCell(pos / 3);
        return;
    default:
        break;
    }
    const QString typed = event->text();
    if (typed.isEmpty() || !typed.at(0).isPrint() || (event->modifiers() & (Qt::ControlModifier | Qt::AltModifier))) {
        // Cursor movement, selection, copy.
        if (event->matches(QKeySequence::Paste) || event->matches(QKeySequence::Cut)
            || event->matches(QKeySequence::Undo) || event->matches(QKeySequence::Redo)) {
            if (m_owner->isReadOnly() || !event->matches(QKeySequence::Paste))
                return;
        }
        QPlainTextEdit::keyPressEvent(event);
        return;
    }
    if (m_owner->isReadOnly())
        return;
    for (const QChar c : typed) {
        if (!isHexDigit(c) || !typeDigit(c))
            return;
    }
}

bool HexEdit::canInsertFromMimeData(const QMimeData *source) const
{
    return !m_owner->isReadOnly() && source->hasText();
}

void HexEdit::insertFromMimeData(const QMimeData *source)
{
    if (m_owner->isReadOnly())
        return;
    const QByteArray bytes = HexTextBox::fromHex(source->text());
    QString text = toPlainText();
    const int cell = qMin(textCursor().position() / 3, text.size() / 3);
    int count = bytes.size();
    if (m_owner->maxLength() > 0)
        count = qMin(count, m_owner->maxLength() - text.size() / 3);
    if (count <= 0)
        return;
    text.insert(cell * 3, HexTextBox::toHex(bytes.left(count)));
    setPlainText(text);
    QTextCursor c = textCursor();
    c.setPosition((cell + count) * 3);
    setTextCursor(c);
}

void HexEdit::focusOutEvent(QFocusEvent *event)
{
    QPlainTextEdit::focusOutEvent(event);
    if (m_owner && event->reason() != Qt::PopupFocusReason)
        m_owner->commit();
}

// ---------------------------------------------------------------------------

HexTextBox::HexTextBox(IHostCore *hostCore, ParameterManagementRegistry *registry, QWidget *parent)
    : ParameterText(hostCore, registry, parent)
    , m_edit(new HexEdit(this, this))
{
    setReadOnly(false);
    setFocusPolicy(Qt::StrongFocus);
    setFocusProxy(m_edit);
    m_edit->resize(size());
    connect(m_edit, SIGNAL(textChanged()), this, SLOT(slotTextChanged()));
}

HexTextBox::~HexTextBox()
{
    // The editor still has the focus while QWidget's destructor clears it;
    // by then this box is half gone, so the editor must not commit into it.
    m_edit->release();
}

const TagTable &HexTextBox::tags()
{
    static const TagTable table = TagTable::of<HexTextBox>(&ParameterText::tags(), {
        {"MaxLength", TagTable::integer("maxLength", 0)},
    });
    return table;
}

QString HexTextBox::toHex(const QByteArray &bytes)
{
    QString text;
    text.reserve(bytes.size() * 3);
    for (const char b : bytes)
        text += QString::asprintf("%02x ", uchar(b));
    return text;
}

QByteArray HexTextBox::fromHex(const QString &text)
{
    QString digits;
    for (const QChar c : text) {
        if (isHexDigit(c))
            digits += c;
    }
    if (digits.size() % 2)
        digits.chop(1);
    return QByteArray::fromHex(digits.toLatin1());
}

QString HexTextBox::hexText() const
{
    return m_edit->toPlainText();
}

void HexTextBox::slotTextChanged()
{
    const QByteArray bytes = fromHex(m_edit->toPlainText());
    if (bytes == m_bytes)
        return;
    m_bytes = bytes;
    emit bytesChanged(bytes);
}

void HexTextBox::commit()
{
    if (isReadOnly())
        return;
    const QString sent = toHex(m_bytes).trimmed();
    // Leaving the box without an edit sends nothing.
    if (fromHex(displayText(0)) == m_bytes)
        return;
    requestText(sent, 0);
}

void HexTextBox::setMaxLength(int bytes)
{
    m_maxLength = qMax(0, bytes);
    showParameter();
}

void HexTextBox::showParameter()
{
    QByteArray bytes = fromHex(displayText(0));
    if (m_maxLength > 0)
        bytes.truncate(m_maxLength);
    m_edit->setPlainText(toHex(bytes));
}

void HexTextBox::ownValueChanged(int index)
{
    if (index == 0)
        showParameter();
    ParameterText::ownValueChanged(index);
}

void HexTextBox::resizeEvent(QResizeEvent *event)
{
    ParameterText::resizeEvent(event);
    m_edit->resize(size());
}
