#include "import/preview/PreviewJson.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace importing {

using namespace Qt::StringLiterals;

namespace {

QJsonObject countsOf(const Preview& preview)
{
    QJsonObject counts{{u"Rows"_s, preview.rows},
                       {u"Matched"_s, preview.matched},
                       {u"Unchanged"_s, preview.unchanged}};
    for (const PreviewKind kind : previewKinds())
        counts.insert(kindKey(kind), preview.count(kind));
    return counts;
}

QJsonObject entryObject(const PreviewEntry& entry)
{
    return {{u"Kind"_s, kindKey(entry.kind)}, {u"Row"_s, entry.row},
            {u"Class"_s, entry.classNumber},  {u"Number"_s, entry.number},
            {u"Name"_s, entry.name},          {u"Subject"_s, entry.subject},
            {u"Before"_s, entry.before},      {u"After"_s, entry.after},
            {u"Remark"_s, entry.remark}};
}

} // namespace

QByteArray previewJson(const Preview& preview)
{
    QJsonArray entries;
    for (const PreviewKind kind : previewKinds()) {
        for (const PreviewEntry& entry : preview.entries(kind))
            entries.append(entryObject(entry));
    }
    const QJsonObject object{{u"Title"_s, preview.title},
                             {u"Warning"_s, preview.warning},
                             {u"Notes"_s, QJsonArray::fromStringList(preview.notes)},
                             {u"Counts"_s, countsOf(preview)},
                             {u"Entries"_s, entries}};
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

} // namespace importing
