// SPDX-License-Identifier: GPL-3.0-or-later
/// What a field of the design may be, what follows from it, and what it takes away: one rule a field, declared in a
/// table beside the routines that own the field. The door in edit/ is the one reader that stores by them.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "core/field_directory.h"
#include "core/ladder.h"
#include "core/messages.h"

namespace lobemax {

/// Whether a value may be; if not, the sentence that tells why.
struct Verdict {
    std::string sentence;  // empty: it may
    Symbol symbol = Symbol::exclamation;
    std::string title{};  // of its box; empty: the program's name

    explicit operator bool() const { return sentence.empty(); }
};

/// The box that tells a refusal, with OK.
void Show_Refusal(const Verdict& refusal);

/// A value on its way into a field: numbers as the field stores them, flags 1 or 0.
struct Typed_Value {
    std::string text;
    double number = 0.0;
};

enum class Field_Role {
    input,    // typed or chosen by the user; part of what a save keeps
    setting,  // how the design is shown or named; no result rests on it
    derived,  // follows from other fields
};

struct Field_Rule {
    std::string_view field;  // as the directory names it
    Field_Role role;
    std::string_view words;  // its name in "Undo ...", %1 its first index; of a derived field: what it follows from
    std::optional<Event> event;
    Verdict (*may_be)(const Design_State& design, const Field_Index& at, const Typed_Value& value) = nullptr;
    /// In place of the plain store.
    void (*store)(Design_State& design, const Field_Index& at, const Typed_Value& value) = nullptr;
    /// After the store: what is derived from the field.
    void (*follow)(Design_State& design, const Field_Index& at) = nullptr;
    /// Store or follow writes into the results too, which are large: only then does a store that faults put them back.
    bool rows = false;
};

/// The rules of the fields that no room above owns: identity, settings, plots, flags, results.
std::span<const Field_Rule> General_Rules();

// ---- checks that many fields share

/// Why the text is none of these words, separated by '|'; a word in other case or between blanks is one of them.
Verdict One_of(std::string_view words, std::string_view text);
/// The word of the list that the text is, written as the list writes it; none.
std::optional<std::string> Listed_Word(std::string_view words, std::string_view text);
Verdict Whole_from(int low, int high, const Typed_Value& value);
Verdict Sign(const Typed_Value& value);
Verdict Positive(const Typed_Value& value, std::string_view sentence);

}  // namespace lobemax
