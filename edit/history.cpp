// SPDX-License-Identifier: GPL-3.0-or-later
#include "edit/history.h"

#include <algorithm>
#include <cstring>

#include "core/ladder.h"
#include "edit/unsaved.h"

namespace lobemax {

namespace {

/// All groups but the results and what belongs to the run of the program.
void Copy_Fields(const Design_State& from, Design_State& to)
{
    to.identity = from.identity;
    to.motion = from.motion;
    to.cam = from.cam;
    to.dynamics = from.dynamics;
    to.linkage = from.linkage;
    to.plot = from.plot;
    to.flags = from.flags;
}

template <class T>
void Mix(std::uint64_t& key, std::span<const T> values)
{
    for (const T& value : values) {
        std::uint64_t word = 0;
        std::memcpy(&word, &value, std::min(sizeof word, sizeof value));
        key = (key ^ word) * 0x9E3779B97F4A7C15ULL;
        key ^= key >> 29;
    }
}

template <class T>
void Mix(std::uint64_t& key, const Table<T>& table, std::size_t& bytes)
{
    for (int row = 0; row <= table.Last_Row(); ++row) {
        Mix(key, table.Points(row));
        bytes += table.Points(row).size_bytes();
    }
}

void Mix(std::uint64_t& key, const Row<Single>& row, std::size_t& bytes)
{
    Mix(key, row.Points());
    bytes += row.Points().size_bytes();
}

/// A key of the units of the results and of all arrays but CalcData and the curves of old files, which no calculation
/// writes; and the size of these arrays.
std::uint64_t Key_of_Rest(const Results_Group& r, std::size_t& bytes)
{
    std::uint64_t key = 1 + static_cast<std::uint64_t>(int{r.WhichUnit});
    for (const Row<Single>* const row : {&r.Profile_X, &r.Profile_Y, &r.Ext_Force_Table, &r.Arm_Pivot_X, &r.Arm_Pivot_Y,
                                         &r.Link_Ratio_S, &r.Link_Ratio_V, &r.Link_Ratio_A, &r.Ode_Time})
        Mix(key, *row, bytes);
    for (const Table<Single>* const table :
         {&r.Link_Theta, &r.Link_Omega, &r.Link_Alpha, &r.Link_X, &r.Link_Y, &r.Ode_States})
        Mix(key, *table, bytes);
    for (const Table<double>* const table : {&r.Fft_Work_A, &r.Fft_Work_B})
        Mix(key, *table, bytes);
    return key;
}

}  // namespace

Snapshot::Snapshot(const Design_State& design, const Snapshot* before) : key_(Key_of(design))
{
    const auto fields = std::make_shared<Design_State>();
    Copy_Fields(design, *fields);
    fields_ = fields;

    const Table<Single>& data = design.results.CalcData;
    last_point_ = data.Last_Point();
    for (int row = 0; row <= data.Last_Row(); ++row) {
        const auto points = data.Points(row);
        const auto place = static_cast<std::size_t>(row);
        if (before != nullptr && place < before->rows_.size() && before->rows_[place]->size() == points.size() &&
            std::memcmp(before->rows_[place]->data(), points.data(), points.size_bytes()) == 0) {
            rows_.push_back(before->rows_[place]);
            continue;
        }
        rows_.push_back(std::make_shared<const Points>(points.begin(), points.end()));
    }
    rest_key_ = Key_of_Rest(design.results, rest_bytes_);
    if (before != nullptr && before->rest_ != nullptr && before->rest_key_ == rest_key_) {
        rest_ = before->rest_;
    } else {
        const auto rest = std::make_shared<Results_Group>(design.results);
        rest->CalcData = {};
        rest_ = rest;
    }
}

void Snapshot::Restore(Design_State& design) const
{
    Copy_Fields(*fields_, design);
    if (rest_ == nullptr) {
        Allocate_Arrays(design, design.run.Saved_Variables, design.motion.Max_Data_Points_used);
        Dimension_Link_Arrays(design, design.motion.Max_Data_Points_used);
        Apply(design, Event::results_let_go);
        return;
    }
    design.results = *rest_;
    Table<Single>& data = design.results.CalcData;
    if (!rows_.empty())
        data.Dimension(static_cast<int>(rows_.size()) - 1, last_point_);
    for (std::size_t row = 0; row < rows_.size(); ++row)
        std::ranges::copy(*rows_[row], data.Points(static_cast<int>(row)).begin());
}

void Snapshot::Drop_Results()
{
    rows_.clear();
    rest_.reset();
}

std::size_t Snapshot::Bytes(std::unordered_set<const void*>& seen) const
{
    std::size_t bytes = seen.insert(fields_.get()).second ? sizeof(Design_State) : 0;
    for (const auto& row : rows_)
        if (seen.insert(row.get()).second)
            bytes += row->size() * sizeof(Single);
    if (rest_ != nullptr && seen.insert(rest_.get()).second)
        bytes += rest_bytes_;
    return bytes;
}

History::History(Design_State& design, std::size_t most_bytes) : design_(design), most_bytes_(most_bytes)
{
    Start_Anew();
}

void History::Start_Anew()
{
    steps_.clear();
    steps_.push_back({"", Snapshot(design_)});
    at_ = floor_ = 0;
}

bool History::Remember(const std::string& name)
{
    if (Key_of(design_) == steps_[at_].snapshot.Key())
        return false;
    steps_.erase(steps_.begin() + static_cast<std::ptrdiff_t>(at_) + 1, steps_.end());
    steps_.push_back({name, Snapshot(design_, &steps_[at_].snapshot)});
    ++at_;
    Keep_within_Limits();
    return true;
}

std::string History::Undo_Text() const
{
    return May_Undo() ? "Undo " + steps_[at_].name : "Undo";
}

std::string History::Redo_Text() const
{
    return May_Redo() ? "Redo " + steps_[at_ + 1].name : "Redo";
}

void History::Go_to(std::size_t step)
{
    at_ = step;
    steps_[at_].snapshot.Restore(design_);
}

bool History::Undo()
{
    if (!May_Undo())
        return false;
    Go_to(at_ - 1);
    return true;
}

bool History::Redo()
{
    if (!May_Redo())
        return false;
    Go_to(at_ + 1);
    return true;
}

std::size_t History::Bytes() const
{
    std::unordered_set<const void*> seen;
    std::size_t bytes = 0;
    for (const Step& step : steps_)
        bytes += step.snapshot.Bytes(seen);
    return bytes;
}

void History::Keep_within_Limits()
{
    // A transaction that is open counts from its own beginning: nothing in front of it moves.
    while (floor_ == 0 && steps_.size() > Most_Steps + 1) {
        steps_.erase(steps_.begin());
        --at_;
    }
    for (std::size_t k = 0; k < at_ && Bytes() > most_bytes_; ++k)
        steps_[k].snapshot.Drop_Results();
}

History::Transaction::Transaction(History& history)
    : history_(history), before_(history.design_, &history.steps_[history.at_].snapshot), floor_(history.floor_)
{
    history.Remember("changes");  // what came about without a name belongs to what was before
    at_ = history.at_;
    history.floor_ = at_;
}

History::Transaction::~Transaction()
{
    if (!open_)
        return;
    history_.floor_ = floor_;
    // A long work may have moved the first steps out; the step to stand on is the design as it was in any case.
    history_.at_ = std::min(at_, history_.steps_.size() - 1);
    history_.steps_.erase(history_.steps_.begin() + static_cast<std::ptrdiff_t>(history_.at_) + 1,
                          history_.steps_.end());
    history_.steps_[history_.at_].snapshot = before_;
    before_.Restore(history_.design_);
}

void History::Transaction::Commit(const std::string& name)
{
    open_ = false;
    history_.floor_ = floor_;
    history_.Remember(name);
}

}  // namespace lobemax
