#include "oldlibraries/Completion.h"

#include "oldlibraries/MissingColumns.h"
#include "oldlibraries/MissingIndexes.h"
#include "oldlibraries/MissingTables.h"
#include "oldlibraries/SettingRows.h"
#include "oldlibraries/SubjectColumns.h"

namespace oldlibraries {

void completeLibrary(database::Connection& library, const QString& templateFile,
                     std::vector<Finding>& findings)
{
    database::Connection emptyLibrary;
    emptyLibrary.Open(templateFile);
    addMissingTables(library, emptyLibrary, findings);
    addMissingColumns(library, emptyLibrary, findings);
    addSubjectColumns(library, findings);
    completeSettings(library, emptyLibrary, findings);
    completeColors(library, emptyLibrary, findings);
    addMissingIndexes(library, emptyLibrary, findings);
}

} // namespace oldlibraries
