#include "platform/runtime/FoldedFailures.h"

#include <utility>

#include <QLocale>

namespace runtime {

using namespace Qt::StringLiterals;

namespace {

/// " - Sub PaiMC/Mdl_MDB" of a failure's text.
QString tagOf(const QString& text)
{
    const qsizetype tag = text.lastIndexOf(u" - "_s);
    return tag < 0 ? QString() : text.mid(tag);
}

} // namespace

bool FoldedFailures::isNew(const QString& text)
{
    const auto known = m_places.constFind(text);
    if (known != m_places.constEnd()) {
        ++m_shown[*known].repeats;
        return false;
    }
    Tag& tag = m_tags[tagOf(text)];
    if (tag.shown == MostTexts) {
        ++tag.passedOver;
        return false;
    }
    ++tag.shown;
    m_places.insert(text, m_shown.size());
    m_shown.push_back({text});
    return true;
}

QStringList FoldedFailures::takeCounts()
{
    const FoldedFailures ended = std::exchange(*this, {});
    QStringList counts;
    for (const Shown& shown : ended.m_shown) {
        if (shown.repeats > 0)
            counts.append(shown.text + u"（同样的提示另有 %1 条）"_s.arg(countText(shown.repeats)));
    }
    for (const auto& [tag, state] : ended.m_tags) {
        if (state.passedOver > 0)
            counts.append(u"另有 %1 条类似的提示"_s.arg(countText(state.passedOver)) + tag);
    }
    return counts;
}

QString countText(qint64 count)
{
    return QLocale(QLocale::Chinese, QLocale::China).toString(count);
}

} // namespace runtime
