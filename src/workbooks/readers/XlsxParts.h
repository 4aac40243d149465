#pragma once

#include <vector>

#include <QByteArray>
#include <QHash>
#include <QString>

#include "workbooks/model/Worksheet.h"
#include "workbooks/readers/Budget.h"
#include "workbooks/readers/NumberFormats.h"
#include "workbooks/readers/XmlScanner.h"

namespace excel {

/// A relationship of a part: where it leads to and as what.
struct Relation
{
    QString kind;    // last word of its type, such as "worksheet"
    QByteArray part; // full name in the archive
};

/// The relationships of one part, by their ids.
class RelationsHandler : public XmlHandler
{
public:
    /// `folder` is the folder of the part they belong to, with "/" behind it or empty.
    explicit RelationsHandler(QByteArray folder) : m_folder(std::move(folder)) {}

    void startElement(std::string_view name, const XmlAttributes& attributes) override;

    /// The first relationship of that kind; an empty part if there is none.
    Relation ofKind(const QString& kind) const;

    QHash<QString, Relation> relations;

private:
    QByteArray m_folder;
    QHash<QString, Relation> m_firstOfKind;
};

/// The list of sheets and the date system.
class BookHandler : public XmlHandler
{
public:
    struct Sheet
    {
        QString name;
        QString relation;
        Visibility visibility = Visibility::Visible;
    };

    explicit BookHandler(Budget& budget) : m_budget(budget) {}

    void startElement(std::string_view name, const XmlAttributes& attributes) override;

    /// False if the part turned out to be something else, such as a text document.
    bool isWorkbook = false;
    DateSystem dates = DateSystem::From1900;
    std::vector<Sheet> sheets;
    int activeTab = 0;

private:
    Budget& m_budget;
    bool m_atRoot = true;
};

/// The number formats of the cell styles.
class StylesHandler : public XmlHandler
{
public:
    void startElement(std::string_view name, const XmlAttributes& attributes) override;
    void endElement(std::string_view name) override;

    NumberFormats formats;
    /// True if a style has a font, fill, border or alignment of its own.
    bool hasLooks = false;

private:
    void addStyle(const XmlAttributes& attributes);

    bool m_inFormats = false;
    bool m_inCellStyles = false;
};

/// The table of shared texts: rich text joined, phonetic hints left out.
class SharedTextsHandler : public XmlHandler
{
public:
    explicit SharedTextsHandler(Budget& budget) : m_budget(budget) {}

    void startElement(std::string_view name, const XmlAttributes& attributes) override;
    void endElement(std::string_view name) override;

    std::vector<QString> texts;

private:
    Budget& m_budget;
    bool m_inPhonetic = false;
};

} // namespace excel
