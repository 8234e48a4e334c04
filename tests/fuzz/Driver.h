#pragma once

#include <QString>

namespace ekinora::fuzz {

struct BatchOptions {
    QString screen;
    quint64 seed = 1;
    int first = 0; // the index of the first run: run i has its own seed, whatever ran before it
    int runs = 1;
    int steps = 8;
};

// Runs a screen's batch in this process, reporting on standard output.
int runBatch(const BatchOptions& options);

quint64 mixSeed(quint64 a, quint64 b);
quint64 textSeed(const QString& text);

} // namespace ekinora::fuzz
