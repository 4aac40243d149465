#include "workbooks/readers/XlsxParts.h"

namespace excel {

namespace {

using namespace Qt::StringLiterals;

constexpr qsizetype mostRelations = 20000;

/// The full name of a target: absolute from the root, otherwise from `folder`.
QByteArray resolve(const QByteArray& folder, QByteArray target)
{
    target.replace('\\', '/');
    if (!target.startsWith('/'))
        target.prepend(folder);
    QList<QByteArray> steps;
    for (const QByteArray& step : target.split('/')) {
        if (step == ".." && !steps.isEmpty())
            steps.removeLast();
        else if (!step.isEmpty() && step != "." && step != "..")
            steps.append(step);
    }
    return steps.join('/');
}

Visibility visibilityOf(const QString& state)
{
    if (state == u"veryHidden")
        return Visibility::VeryHidden;
    return state == u"hidden" ? Visibility::Hidden : Visibility::Visible;
}

} // namespace

void RelationsHandler::startElement(std::string_view name, const XmlAttributes& attributes)
{
    if (name != "Relationship" || attributes.text("TargetMode") == u"External")
        return;
    if (relations.size() >= mostRelations)
        throw ReadFailure{Fault::TooLarge};
    const QString kind = attributes.text("Type").section(u'/', -1);
    const Relation relation{kind, resolve(m_folder, QByteArray(attributes.find("Target")))};
    relations.insert(attributes.text("Id"), relation);
    if (!m_firstOfKind.contains(kind))
        m_firstOfKind.insert(kind, relation);
}

Relation RelationsHandler::ofKind(const QString& kind) const
{
    return m_firstOfKind.value(kind);
}

void BookHandler::startElement(std::string_view name, const XmlAttributes& attributes)
{
    if (m_atRoot)
        isWorkbook = name == "workbook";
    m_atRoot = false;
    if (name == "workbookPr" && attributes.flag("date1904"))
        dates = DateSystem::From1904;
    else if (name == "workbookView")
        activeTab = attributes.number("activeTab", 0);
    if (name != "sheet")
        return;
    m_budget.takeSheets(1);
    sheets.push_back({decodeEscapes(attributes.text("name")), attributes.text("id"),
                      visibilityOf(attributes.text("state"))});
}

void StylesHandler::startElement(std::string_view name, const XmlAttributes& attributes)
{
    if (name == "numFmts")
        m_inFormats = true;
    else if (name == "cellXfs")
        m_inCellStyles = true;
    else if (name == "numFmt" && m_inFormats)
        formats.addFormat(attributes.number("numFmtId", 0), attributes.text("formatCode"));
    else if (name == "xf" && m_inCellStyles)
        addStyle(attributes);
    else if (name == "alignment" && m_inCellStyles)
        hasLooks = true;
    if (formats.size() > mostStyles)
        throw ReadFailure{Fault::TooLarge};
}

void StylesHandler::addStyle(const XmlAttributes& attributes)
{
    formats.addStyle(attributes.number("numFmtId", 0));
    for (const std::string_view look : {"fontId", "fillId", "borderId"})
        hasLooks = hasLooks || attributes.number(look, 0) != 0;
}

void StylesHandler::endElement(std::string_view name)
{
    if (name == "numFmts")
        m_inFormats = false;
    else if (name == "cellXfs")
        m_inCellStyles = false;
}

void SharedTextsHandler::startElement(std::string_view name, const XmlAttributes&)
{
    if (name == "si")
        characters.clear();
    else if (name == "rPh")
        m_inPhonetic = true;
    else if (name == "t")
        collecting = !m_inPhonetic;
}

void SharedTextsHandler::endElement(std::string_view name)
{
    if (name == "t") {
        collecting = false;
    } else if (name == "rPh") {
        m_inPhonetic = false;
    } else if (name == "si") {
        m_budget.takeTexts(1);
        texts.push_back(decodeEscapes(QString::fromStdString(characters)));
        m_budget.takeText(texts.back().size());
    }
}

} // namespace excel
