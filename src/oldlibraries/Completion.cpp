#include "oldlibraries/Completion.h"

#include "platform/database/Statement.h"

namespace oldlibraries {

using namespace Qt::StringLiterals;

void completeLibrary(database::Connection& library, const QString& templateFile,
                     std::vector<Finding>&)
{
    database::Connection empty;
    empty.Open(templateFile);
    database::Statement indexes(empty, u"select sql from sqlite_master where type='index' and "
                                       "sql is not null"_s);
    while (indexes.step())
        library.Execute(indexes.text(0));
}

void findFaults(database::Connection&, std::vector<Finding>&) {}

} // namespace oldlibraries
