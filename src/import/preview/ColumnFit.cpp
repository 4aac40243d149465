#include "import/preview/ColumnFit.h"

#include "platform/database/Error.h"

namespace importing {

ColumnFit fitInto(const database::Column& column, const runtime::Value& value)
{
    try {
        return {column.type.converted(value, column.name), {}};
    } catch (const database::Error& error) {
        return {{}, error.description()};
    }
}

} // namespace importing
