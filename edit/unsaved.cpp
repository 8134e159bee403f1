// SPDX-License-Identifier: GPL-3.0-or-later
#include "edit/unsaved.h"

#include <cstring>
#include <span>
#include <string>
#include <vector>

#include "core/ladder.h"
#include "edit/door.h"

namespace lobemax {

namespace {

/// Mixes bytes into a key, eight at a time (the multiply and fold of wyhash's family, which scatters each bit over
/// all).
class Mixer {
public:
    void Bytes(const void* from, std::size_t count)
    {
        const auto* at = static_cast<const unsigned char*>(from);
        for (; count >= sizeof(std::uint64_t); count -= sizeof(std::uint64_t), at += sizeof(std::uint64_t)) {
            std::uint64_t word = 0;
            std::memcpy(&word, at, sizeof word);
            Word(word);
        }
        std::uint64_t last = count;  // the length tells "a" from "a\0"
        std::memcpy(reinterpret_cast<unsigned char*>(&last) + 1, at, count);
        Word(last);
    }
    void Word(std::uint64_t word)
    {
        key_ = (key_ ^ word) * 0x9E3779B97F4A7C15ULL;
        key_ ^= key_ >> 32;
    }
    std::uint64_t Key() const { return key_; }

private:
    std::uint64_t key_ = 0xA0761D6478BD642FULL;
};

const std::vector<const Field*>& Inputs()
{
    static const std::vector<const Field*> inputs = [] {
        std::vector<const Field*> found;
        for (const Field& field : Field_Directory())
            if (Rule_of(field).role == Field_Role::input)
                found.push_back(&field);
        return found;
    }();
    return inputs;
}

constexpr Mark results[]{Mark::motion,   Mark::size,           Mark::forces,           Mark::vibration, Mark::stress,
                         Mark::polydyne, Mark::external_force, Mark::compensating_cam, Mark::transform};

}  // namespace

std::uint64_t Key_of_Saved_Work(const Design_State& design)
{
    Mixer mixer;
    auto& looked_at = const_cast<Design_State&>(design);  // the directory hands out places to write to
    for (const Field* const field : Inputs())
        Each_Element(design, *field, [&](const Field_Index& at) {
            std::visit(
                [&](const auto* place) {
                    using T = std::remove_cvref_t<decltype(*place)>;
                    if constexpr (std::is_same_v<T, std::string>) {
                        mixer.Bytes(place->data(), place->size());
                    } else {
                        const double number = *place;
                        mixer.Bytes(&number, sizeof number);
                    }
                },
                field->at(looked_at, at));
        });
    for (const Mark mark : results)
        mixer.Word(Holds(design, mark) ? 1 : 2);
    const Table<Single>& data = design.results.CalcData;
    mixer.Word(static_cast<std::uint64_t>(data.Last_Row() + 1));
    for (int row = 0; row <= data.Last_Row(); ++row) {
        const auto points = data.Points(row);
        mixer.Bytes(points.data(), points.size_bytes());
    }
    return mixer.Key();
}

std::uint64_t Key_of(const Design_State& design)
{
    Mixer mixer;
    mixer.Word(Key_of_Saved_Work(design));
    mixer.Word(Holds(design, Mark::linkage) ? 1 : 2);
    return mixer.Key();
}

bool Unsaved(const Design_State& design)
{
    return Key_of_Saved_Work(design) != design.run.Saved_Key;
}

void Mark_Saved(Design_State& design)
{
    design.run.Saved_Key = Key_of_Saved_Work(design);
}

void Mark_Unsaved(Design_State& design)
{
    design.run.Saved_Key = 0;
}

}  // namespace lobemax
