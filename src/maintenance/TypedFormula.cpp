#include "maintenance/TypedFormula.h"

namespace maintenance {

QString normalFormula(QString typed)
{
    return typed.replace(u'＋', u'+').removeIf([](QChar letter) { return letter.isSpace(); });
}

} // namespace maintenance
