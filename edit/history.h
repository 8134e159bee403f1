// SPDX-License-Identifier: GPL-3.0-or-later
/// What a design was: transactions of screens, undo and redo of accepted changes.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <unordered_set>
#include <vector>

#include "core/design_state.h"

namespace lobemax {

/// A design as it was at one moment. Its calculated rows are shared with the moment before wherever they are the same.
class Snapshot {
public:
    /// @param before  the moment before, whose rows may be shared; none: nothing is shared
    explicit Snapshot(const Design_State& design, const Snapshot* before = nullptr);

    std::uint64_t Key() const { return key_; }
    /// Gives the design all its fields and results back; what belongs to the run of the program stays.
    void Restore(Design_State& design) const;
    /// Bytes that it holds, those aside that were seen in other snapshots; what it holds counts as seen from now on.
    std::size_t Bytes(std::unordered_set<const void*>& seen) const;
    /// Lets the calculated rows go; Restore then leaves a design whose results do not hold.
    void Drop_Results();

private:
    using Points = std::vector<Single>;
    std::uint64_t key_ = 0;
    std::uint64_t rest_key_ = 0;
    std::shared_ptr<const Design_State> fields_;       // with no results
    std::vector<std::shared_ptr<const Points>> rows_;  // of CalcData
    std::shared_ptr<const Results_Group> rest_;        // the other arrays
    int last_point_ = -1;
    std::size_t rest_bytes_ = 0;
};

/// The steps of a design: each accepted change that differs, with its name, up to so many and so much memory.
class History {
public:
    /// At least so many steps are kept.
    static constexpr std::size_t Most_Steps = 400;
    /// Of all steps together; beyond it the oldest lose their calculated rows, never what was typed.
    static constexpr std::size_t Most_Bytes = std::size_t{64} << 20;

    /// @param most_bytes  for tests
    explicit History(Design_State& design, std::size_t most_bytes = Most_Bytes);

    /// Another design is on the desk (opened, made afresh, an example): there is nothing to take back.
    void Start_Anew();

    /// The design may have changed: if it has, the change can be undone under this name, and nothing can be redone.
    /// @return whether it has
    bool Remember(const std::string& name);

    bool May_Undo() const { return at_ > floor_; }
    bool May_Redo() const { return at_ + 1 < steps_.size(); }
    /// "Undo Beta of segment 2", "Redo ..."; "Undo" and "Redo" where there is nothing.
    std::string Undo_Text() const;
    std::string Redo_Text() const;
    /// @return whether a step was taken
    bool Undo();
    bool Redo();

    std::size_t Steps() const { return steps_.size() - 1; }
    std::size_t Bytes() const;

    /// A screen's work: kept whole, or given back whole. While it stands Undo goes back to its beginning and no
    /// further.
    class Transaction {
    public:
        explicit Transaction(History& history);
        /// Rolls back unless it was committed.
        ~Transaction();
        Transaction(const Transaction&) = delete;
        Transaction& operator=(const Transaction&) = delete;

        /// The work stands; what of it no step holds yet becomes one under this name.
        void Commit(const std::string& name);

    private:
        History& history_;
        Snapshot before_;
        std::size_t at_;
        std::size_t floor_;
        bool open_ = true;
    };

private:
    struct Step {
        std::string name;  // of the change that led here
        Snapshot snapshot;
    };
    void Go_to(std::size_t step);
    void Keep_within_Limits();

    Design_State& design_;
    std::size_t most_bytes_;
    std::vector<Step> steps_;  // the first is where the history begins
    std::size_t at_ = 0;
    std::size_t floor_ = 0;
};

}  // namespace lobemax
