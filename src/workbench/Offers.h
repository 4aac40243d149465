#pragma once

#include <QString>
#include <QStringList>

#include "library/ScoreLibrary.h"

namespace workbench {

// What the open library offers to choose from. A statement that fails is shown, and its list ends
// there.

/// Families of columns that a browse can show.
QStringList columnFamilies();
/// Columns of 成绩表 to sort by: those behind library::fieldsNotOffered.
QStringList sortColumns(library::ScoreLibrary& scoreLibrary);
/// The statistics: the pair of high and low groups, then the rows of 设置表 behind the fourth.
QStringList statisticsItems(library::ScoreLibrary& scoreLibrary);
/// Class numbers of one stream, counted from 0 among Catalogue::Streams.
QStringList classesOf(const library::Catalogue& catalogue, int stream);
/// Class numbers stream by stream. A class with students of both streams stands twice.
QStringList classes(const library::Catalogue& catalogue);
/// Values of 类别代码 among the students.
QStringList categories(library::ScoreLibrary& scoreLibrary);

} // namespace workbench
