#include "marktable.h"

void MarkTable::set(int line, int mask, bool on, bool alternate)
{
    int bits = m_bits.value(line);
    bits = on ? bits | mask : bits & ~mask;
    if (on && mask != CurrentLine && mask != Lookup && mask != Caller)
        bits = alternate ? bits | Alternate : bits & ~Alternate;
    if (bits & ~Alternate)
        m_bits.insert(line, bits);
    else
        m_bits.remove(line);
}

void MarkTable::clear(int mask)
{
    for (auto it = m_bits.begin(); it != m_bits.end();) {
        *it &= ~mask;
        it = *it & ~Alternate ? std::next(it) : m_bits.erase(it);
    }
}
