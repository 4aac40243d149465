#pragma once

#include "oldlibraries/OldTable.h"
#include "platform/database/ColumnDeclaration.h"

namespace oldlibraries {

/// The column of a new library for an old one of which only the type is known.
database::ColumnDeclaration ownDeclaration(const OldColumn& column);

/// The column as the empty library has it, wider where the old one holds more, and of the old
/// one's type where that is of another kind.
database::ColumnDeclaration declarationLike(const database::ColumnDeclaration& known,
                                            const OldColumn& column);

/// What a user has to know of columns of this type; "" for most.
QString newForm(OldType type);

/// What a user has to know of a column that is not as the empty library has it; "" if it only
/// holds more.
QString newKind(const database::ColumnDeclaration& known,
                const database::ColumnDeclaration& column);

} // namespace oldlibraries
