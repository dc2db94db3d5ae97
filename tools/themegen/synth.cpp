#include "synth.h"

#include <QFile>

#include <algorithm>
#include <cmath>

namespace {

constexpr double kPi = 3.14159265358979323846;

double envelope(double t, double length)
{
    const double attack = std::min(0.01, length / 4);
    if (t < attack)
        return t / attack;
    return std::exp(-3.0 * (t - attack) / length);
}

void put16(QByteArray& out, int value)
{
    out.append(char(value & 0xFF));
    out.append(char((value >> 8) & 0xFF));
}

void put32(QByteArray& out, quint32 value)
{
    put16(out, int(value & 0xFFFF));
    put16(out, int(value >> 16));
}

} // namespace

void Synth::play(const std::vector<Note>& notes, double volume)
{
    for (const Note& note : notes) {
        const int count = int(note.seconds * m_rate);
        for (int i = 0; i < count; ++i) {
            const double t = double(i) / m_rate;
            double v = 0;
            if (note.frequency > 0) {
                for (int h = 1; h <= 6; ++h)
                    v += std::pow(note.brightness, h - 1) * std::sin(2 * kPi * note.frequency * h * t) / h;
                v *= envelope(t, note.seconds);
            }
            m_samples.push_back(volume * v);
        }
    }
}

void Synth::sweep(double fromHz, double toHz, double seconds, double volume)
{
    const int count = int(seconds * m_rate);
    double phase = 0;
    for (int i = 0; i < count; ++i) {
        const double t = double(i) / m_rate;
        const double f = fromHz * std::pow(toHz / fromHz, t / seconds);
        phase += 2 * kPi * f / m_rate;
        const double fade = std::min(1.0, std::min(t / 0.01, (seconds - t) / 0.05));
        m_samples.push_back(volume * fade * (std::sin(phase) + 0.3 * std::sin(2 * phase)));
    }
}

void Synth::click(double seconds, double volume)
{
    const int count = int(seconds * m_rate);
    unsigned noise = 12345;
    for (int i = 0; i < count; ++i) {
        const double t = double(i) / m_rate;
        noise = noise * 1103515245u + 12345u;
        const double white = double((noise >> 16) & 0x7FFF) / 16384.0 - 1.0;
        const double tick = std::sin(2 * kPi * 2200 * t);
        m_samples.push_back(volume * std::exp(-t * 180) * (0.6 * tick + 0.4 * white));
    }
}

QByteArray Synth::wave() const
{
    QByteArray data;
    for (const double s : m_samples)
        put16(data, int(std::lround(std::clamp(s, -1.0, 1.0) * 32767)));
    QByteArray out("RIFF");
    put32(out, quint32(36 + data.size()));
    out.append("WAVEfmt ");
    put32(out, 16);
    put16(out, 1); // PCM
    put16(out, 1); // mono
    put32(out, quint32(m_rate));
    put32(out, quint32(m_rate * 2));
    put16(out, 2);
    put16(out, 16);
    out.append("data");
    put32(out, quint32(data.size()));
    return out + data;
}

bool Synth::save(const QString& path) const
{
    QFile f(path);
    return f.open(QIODevice::WriteOnly) && f.write(wave()) >= 0;
}
