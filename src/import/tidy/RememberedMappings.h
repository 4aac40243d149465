#pragma once

#include <deque>
#include <optional>
#include <vector>

#include "import/tidy/Proposal.h"
#include "platform/runtime/AppPaths.h"

namespace tidy {

/// What users confirmed for the columns of earlier workbooks, found again by their headings: a
/// small file in the folder of data/, the newest first.
class RememberedMappings
{
public:
    /// Kept at most.
    static constexpr int most = 50;

    /// Reads the file; one that is missing, too large or no such list counts as empty.
    explicit RememberedMappings(const runtime::AppPaths& paths);

    /// Takes over what was confirmed for sheets with the same headings. True if that changed
    /// anything; `reconsider` has to follow then.
    bool apply(Proposal& proposal) const;

    /// Keeps how the sheets that are taken are read. Throws runtime::Error where the file cannot be
    /// written.
    void remember(const Proposal& proposal);

    int count() const { return int(m_mappings.size()); }

private:
    struct Mapping
    {
        Goal goal = Goal::ExamScores;
        /// Of all columns, folded.
        QStringList headings = {};
        /// In step with the headings.
        std::vector<ColumnUse> uses = {};
    };

    static std::optional<Mapping> mappingOf(Goal goal, const SheetProposal& sheet);
    static bool applyTo(SheetProposal& sheet, const Mapping& mapping);
    static std::optional<Mapping> mappingIn(const class QJsonObject& json);
    const Mapping* find(const Mapping& wanted) const;
    void read();
    void write() const;

    QString m_file;
    std::deque<Mapping> m_mappings;
};

} // namespace tidy
