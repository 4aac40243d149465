#include "oldlibraries/MissingIndexes.h"

#include "platform/database/Error.h"
#include "platform/database/Statement.h"

namespace oldlibraries {

using namespace Qt::StringLiterals;
using database::Statement;

void addMissingIndexes(database::Connection& library, database::Connection& emptyLibrary,
                       std::vector<Finding>& findings)
{
    Statement known(library,
                    u"select 1 from sqlite_master where type='index' and name=? collate nocase"_s);
    Statement indexes(emptyLibrary, u"select name, tbl_name, sql from sqlite_master "
                                    "where type='index' and sql is not null order by rowid"_s);
    while (indexes.step()) {
        known.bind({indexes.text(0)});
        const bool isKnown = known.step();
        known.finish();
        try {
            if (!isKnown)
                library.Execute(indexes.text(2));
        } catch (const database::Error& error) {
            if (error.failure() != database::Failure::Sql)
                throw;
            findings.push_back({indexes.text(1),
                                0,
                                {},
                                indexes.text(0),
                                u"索引没有建立，查找会慢一些：%1"_s.arg(error.description())});
        }
    }
}

} // namespace oldlibraries
