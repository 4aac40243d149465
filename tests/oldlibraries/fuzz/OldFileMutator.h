#pragma once

#include <QByteArray>

#include "support/ByteMutator.h"

namespace fuzz {

/// Changes files of the old engine where it hurts: pointers, counts and places, so that most of
/// what comes out still passes for such a file.
class OldFileMutator
{
public:
    explicit OldFileMutator(support::ByteMutator& random) : m_random(random) {}

    QByteArray mutated(QByteArray file);

private:
    void mutatePage(QByteArray& file);
    void mutateHeader(QByteArray& file);
    void mutateRows(QByteArray& file, qsizetype page);
    void mutateRow(QByteArray& file, qsizetype begin, qsizetype end);
    void mutateDefinition(QByteArray& file, qsizetype page);
    void mutateSize(QByteArray& file);
    void copyPage(QByteArray& file);
    quint32 number(const QByteArray& file);

    support::ByteMutator& m_random;
};

} // namespace fuzz
