#include "SignalPath.h"

#include <QDir>
#include <QDomElement>
#include <QFile>
#include <QRegularExpression>
#include <QStringList>

#include <algorithm>
#include <cmath>

namespace {

constexpr int maxEnvelopePoints = 100000;
constexpr qint64 maxEnvelopeBytes = 4 * 1024 * 1024;
constexpr double silence = -200;

bool readNumber(const QString &text, double *value)
{
    const QString t = text.trimmed();
    if (t.compare(QLatin1String("-inf"), Qt::CaseInsensitive) == 0) {
        *value = silence;
        return true;
    }
    bool ok = false;
    const double v = t.toDouble(&ok);
    if (!ok || !std::isfinite(v))
        return false;
    *value = v;
    return true;
}

} // namespace

bool SignalPath::fromElement(const QDomElement &e, SignalPath *path, QString *error)
{
    SignalPath p;
    p.name = e.attribute(QStringLiteral("name"));
    p.level = e.attribute(QStringLiteral("level"));
    if (p.name.isEmpty() || p.level.isEmpty()) {
        *error = QStringLiteral("an input needs a name and a level meter");
        return false;
    }
    p.gain = e.attribute(QStringLiteral("gain"));
    p.mute = e.attribute(QStringLiteral("mute"));
    p.fader = e.attribute(QStringLiteral("fader"));
    p.gainReduction = e.attribute(QStringLiteral("gr"));
    p.threshold = e.attribute(QStringLiteral("threshold"));
    p.ratio = e.attribute(QStringLiteral("ratio"));
    p.compressorOn = e.attribute(QStringLiteral("compressorOn"));
    const struct {
        const char *name;
        double *value;
    } times[] = {{"attack", &p.attackMs}, {"release", &p.releaseMs}, {"hold", &p.holdMs}};
    for (const auto &t : times) {
        const QString text = e.attribute(QLatin1String(t.name));
        if (text.isEmpty())
            continue;
        bool ok = false;
        const double v = text.toDouble(&ok);
        if (!ok || !std::isfinite(v) || v < 0 || v > 600000) {
            *error = QStringLiteral("input %1: %2 \"%3\" is not a time from 0 to 600000 ms")
                         .arg(p.name, QLatin1String(t.name), text);
            return false;
        }
        *t.value = v;
    }
    *path = p;
    return true;
}

bool SignalSource::fromWords(const QStringList &words, const QString &folder, SignalSource *source, QString *error)
{
    const QString kind = words.value(0);
    SignalSource s;
    if (kind == QLatin1String("off") && words.size() == 1) {
        *source = s;
        return true;
    }
    if ((kind == QLatin1String("tone") || kind == QLatin1String("noise")) && words.size() == 2) {
        if (!readNumber(words.at(1), &s.level) || s.level < silence || s.level > 100) {
            *error = QStringLiteral("bad level \"%1\" (dB, at most 100)").arg(words.at(1));
            return false;
        }
        s.kind = kind == QLatin1String("tone") ? Tone : Noise;
        *source = s;
        return true;
    }
    if (kind == QLatin1String("envelope") && words.size() == 2) {
        const QString path = QDir(folder).filePath(words.at(1));
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly)) {
            *error = QStringLiteral("cannot read %1: %2").arg(path, file.errorString());
            return false;
        }
        if (file.size() > maxEnvelopeBytes) {
            *error = QStringLiteral("%1: an envelope file may hold at most 4 MiB").arg(path);
            return false;
        }
        QString message;
        if (!readEnvelope(file.read(maxEnvelopeBytes), &s.envelope, &message)) {
            *error = QStringLiteral("%1: %2").arg(path, message);
            return false;
        }
        s.kind = Envelope;
        *source = s;
        return true;
    }
    *error = QStringLiteral("a signal is \"off\", \"tone DB\", \"noise DB\" or \"envelope FILE\"");
    return false;
}

bool SignalSource::readEnvelope(const QByteArray &text, QVector<QPointF> *points, QString *error)
{
    QVector<QPointF> out;
    const QList<QByteArray> lines = text.split('\n');
    for (int i = 0; i < lines.size(); ++i) {
        QString line = QString::fromUtf8(lines.at(i));
        const int hash = line.indexOf(QLatin1Char('#'));
        if (hash >= 0)
            line.truncate(hash);
        static const QRegularExpression separators(QStringLiteral("[\\s,;]+"));
        const QStringList fields = line.split(separators, Qt::SkipEmptyParts);
        if (fields.isEmpty())
            continue;
        double ms, db;
        if (fields.size() != 2 || !readNumber(fields.at(0), &ms) || !readNumber(fields.at(1), &db) || ms < 0
            || ms > 1e9 || db > 100 || (!out.isEmpty() && ms <= out.last().x())) {
            *error = QStringLiteral("line %1: expected \"MS DB\" with the time above the one before").arg(i + 1);
            return false;
        }
        if (out.size() == maxEnvelopePoints) {
            *error = QStringLiteral("more than %1 points").arg(maxEnvelopePoints);
            return false;
        }
        out.append(QPointF(ms, qMax(db, silence)));
    }
    if (out.isEmpty()) {
        *error = QStringLiteral("no points");
        return false;
    }
    *points = out;
    return true;
}

double SignalSource::envelopeAt(const QVector<QPointF> &points, double ms)
{
    if (points.isEmpty())
        return silence;
    const double length = points.last().x();
    double t = ms;
    if (length > 0 && t > length)
        t = std::fmod(t, length);
    if (t <= points.first().x())
        return points.first().y();
    const auto after = std::upper_bound(points.cbegin(), points.cend(), t,
                                        [](double v, const QPointF &p) { return v < p.x(); });
    if (after == points.cend())
        return points.last().y();
    const QPointF b = *after;
    const QPointF a = *(after - 1);
    return a.y() + (b.y() - a.y()) * (t - a.x()) / (b.x() - a.x());
}

void Ballistics::advance(double target, double ms, const SignalPath &path, double floor)
{
    // Slightly below the floor, so that a falling reading reaches it in finite time.
    const double goal = qMax(target, floor - 1);
    level = qMax(level, floor - 1);
    peak = qMax(peak, floor - 1);
    const double constant = goal > level ? path.attackMs : path.releaseMs;
    level = constant <= 0 ? goal : level + (goal - level) * (1 - std::exp(-ms / constant));
    if (std::abs(goal - level) < 0.01)
        level = goal;
    if (level >= peak) {
        peak = level;
        holdLeft = path.holdMs;
        return;
    }
    double falling = ms;
    if (holdLeft > 0) {
        falling = qMax(0.0, ms - holdLeft);
        holdLeft = qMax(0.0, holdLeft - ms);
    }
    if (falling > 0) {
        peak = path.releaseMs <= 0 ? level : peak + (level - peak) * (1 - std::exp(-falling / path.releaseMs));
        if (peak - level < 0.01)
            peak = level;
    }
}
