#pragma once

#include <array>
#include <optional>
#include <set>

#include "library/ScoreLibrary.h"
#include "maintenance/PhotoFiles.h"
#include "maintenance/RecordQuestions.h"
#include "platform/database/Recordset.h"
#include "platform/grid/FlexGrid.h"

namespace maintenance {

/// How the save of a record ended. What is wrong has been told.
enum class RecordSave {
    Saved,
    WithoutPhoto, ///< a photo was chosen and is not stored; the rest is
    GivenUp,      ///< nothing was written: the user said so, or there is no such student
    Failed        ///< nothing was written
};

/// One student's row of 信息表 in a grid of 15 rows: names of fields in column 0, values in column
/// 1. Both can be edited; a name that was edited says which field the row stands for.
class StudentRecord
{
public:
    static constexpr int LabelCol = 0;
    static constexpr int ValueCol = 1;
    /// Shows 照片名, and takes the path of a file by choosePhoto alone.
    static constexpr int PhotoRow = 6;

    /// `photos` must outlive it.
    StudentRecord(library::ScoreLibrary& scoreLibrary, const PhotoFiles& photos);

    /// The fields that the rows stand for at first.
    static const QStringList& fields();

    grid::FlexGrid MSFlexGrid1;
    /// ID of the student shown; 0 for none.
    qint64 StuID = 0;

    /// Shows the student of this ID; does nothing for 0. False if there is none any more, which is
    /// told, or if the library could not be read: nobody is shown then.
    bool ShowGeRenXX(qint64 id);
    /// Reads what the user has not changed anew. False if he is gone, which is told, or if the
    /// library could not be read: what stands here stays then.
    bool refresh();
    /// Shows nobody.
    void clear();

    /// Takes a file as the student's new photo. False if it is no picture, which is told. One that
    /// does not exist is refused by the save.
    bool choosePhoto(const QString& path);
    /// True from choosePhoto until the photo is stored or another student shown.
    bool isPhotoChosen() const { return m_photo.has_value(); }

    /// True if the grid holds something that a save would store.
    bool isChanged() const;

    /// Saves the record, after the questions that it raises. Streams, classes and exams are read
    /// anew and the library tells of it if what other screens show has changed.
    RecordSave Command1_Click();

private:
    using Rows = std::set<int>;

    /// What a row stood for and held when it was read.
    struct Shown
    {
        QString label;
        QString value;
    };

    const QString& label(int row) const { return MSFlexGrid1.TextMatrix(row, LabelCol); }
    const QString& value(int row) const { return MSFlexGrid1.TextMatrix(row, ValueCol); }
    bool isTyped(int row) const;
    bool isUntouched(int row) const;
    void open(database::Recordset& rows);
    std::optional<bool> read(const Rows& kept);
    void readRow(database::Recordset& rows, int row, const Rows& kept);
    std::optional<RecordChange> foresee();
    RecordSave write(NameScope scope);
    Rows assign(database::Recordset& rows);
    void assignField(database::Recordset& rows, int row, std::set<int>& assigned);
    bool assignPhoto(database::Recordset& rows);
    void tellOthers(const RecordChange& change);

    library::ScoreLibrary& m_library;
    const PhotoFiles& m_photos;
    std::array<Shown, 15> m_shown;
    /// How the file of the photo row goes in; nothing while the row shows what is stored.
    std::optional<PhotoBytes> m_photo;
};

} // namespace maintenance
