#pragma once

#include <deque>
#include <optional>
#include <vector>

#include "import/tidy/Proposal.h"
#include "platform/runtime/AppPaths.h"

namespace tidy {

/// What users chose for columns of earlier workbooks, found again by all their headings: a small
/// file in the folder of data/, the newest first. What the program found out by itself is found out
/// anew, by the subjects and the content of then.
class RememberedMappings
{
public:
    /// Kept at most.
    static constexpr int most = 50;

    /// Reads the file; one that is missing, too large or no such list counts as empty.
    explicit RememberedMappings(const runtime::AppPaths& paths);

    /// Takes over what was chosen for sheets with the same headings. True if that changed
    /// anything; `reconsider` has to follow then.
    bool apply(Proposal& proposal) const;

    /// Keeps what was chosen for the columns of the sheets that are taken. Throws runtime::Error
    /// where the file cannot be written.
    void remember(const Proposal& proposal);

    int count() const { return int(m_mappings.size()); }

private:
    struct Mapping
    {
        Goal goal = Goal::ExamScores;
        /// Of all columns, folded.
        QStringList headings = {};
        /// In step with the headings; nothing for a column that nobody chose.
        std::vector<std::optional<ColumnUse>> chosen = {};

        bool hasChoice() const;
    };

    static std::optional<Mapping> mappingOf(Goal goal, const SheetProposal& sheet);
    static void keepUnused(Mapping& mapping, const Mapping& former);
    static bool applyTo(SheetProposal& sheet, const Mapping& mapping);
    static std::optional<Mapping> mappingIn(const class QJsonObject& json);
    const Mapping* find(const Mapping& wanted) const;
    void read();
    void write() const;

    QString m_file;
    std::deque<Mapping> m_mappings;
};

} // namespace tidy
