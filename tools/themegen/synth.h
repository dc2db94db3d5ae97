#pragma once
// Small sound synthesis for the theme's wave files: notes as sums of harmonics with an
// attack/decay envelope, written as 16-bit PCM mono.

#include <QByteArray>
#include <QString>

#include <vector>

struct Note {
    double frequency;  // Hz; 0 is a rest
    double seconds;
    double brightness; // 0: a sine, towards 1: more upper harmonics
};

class Synth {
public:
    explicit Synth(int sampleRate) : m_rate(sampleRate) {}

    void play(const std::vector<Note>& notes, double volume = 0.5);
    void sweep(double fromHz, double toHz, double seconds, double volume = 0.4);
    void click(double seconds, double volume = 0.6);

    int sampleRate() const { return m_rate; }
    QByteArray wave() const; // a complete RIFF WAVE file
    bool save(const QString& path) const;

private:
    int m_rate;
    std::vector<double> m_samples;
};
