#include "maintenance/TypedFormula.h"

#include "library/Catalogue.h"
#include "library/ColumnNames.h"
#include "scoring/TotalFormulas.h"

namespace maintenance {

using namespace Qt::StringLiterals;

QString normalFormula(QString typed)
{
    return typed.replace(u'＋', u'+').removeIf([](QChar letter) { return letter.isSpace(); });
}

QString typedFormulaFault(const QString& formula, const QStringList& columns)
{
    QString fault = scoring::formulaFault(formula, columns);
    if (!fault.isEmpty())
        return fault;
    for (const QString& term : library::formulaTerms(formula)) {
        if (library::isTotal(term))
            return u"公式里的“%1”是总分：总分没有满分，每次计算都会出错。请写出它所加的各科。"_s
                .arg(term);
    }
    return {};
}

} // namespace maintenance
