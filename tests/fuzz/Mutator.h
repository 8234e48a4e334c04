#pragma once

// Mutations of a service reply.

#include "platform/HttpClient.h"

#include <QString>
#include <random>

namespace ekinora::fuzz {

struct Mutated {
    QString kind;      // empty: the reply goes through as the service gave it
    int delayMs = 0;   // a slow answer arrives this much later
    platform::HttpResponse reply;
};

class Mutator {
public:
    explicit Mutator(std::mt19937_64& rng) : m_rng(rng) {}
    // Mutates with the given chance, else passes the reply on.
    Mutated mutate(const platform::HttpResponse& base, double chance);

    static QStringList kinds();

private:
    int below(int n) { return n <= 0 ? 0 : int(m_rng() % quint64(n)); }
    Mutated apply(const QString& kind, const platform::HttpResponse& base);
    std::mt19937_64& m_rng;
};

} // namespace ekinora::fuzz
