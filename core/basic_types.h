// SPDX-License-Identifier: GPL-3.0-or-later
/// The number widths of the design and the arrays that keep their bounds.
///
/// Reals rest in 32 bits and are doubles in every expression, integers are 16 bits, flags are 16 bits
/// with true = -1. What does not fit is a Fault, never a wrapped or a silent value.
#pragma once

#include <array>
#include <cmath>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <span>
#include <utility>
#include <vector>

namespace lobemax {

/// The run-time errors by number, as the error reporter words them.
enum Error_Number : int {
    invalid_argument = 5,
    overflow = 6,
    out_of_memory = 7,
    out_of_bounds = 9,
    division_by_zero = 11,
    type_mismatch = 13,
    out_of_stack_space = 28,
    internal_error = 51,
    bad_file_name = 52,
    file_not_found = 53,
    device_io_error = 57,
    bad_record_length = 59,
    disk_full = 61,
    past_end_of_file = 62,
    no_such_file_in_directory = 64,
    permission_denied = 70,
    disk_not_ready = 71,
    path_access_error = 75,
};

/// A run-time error on its way to the trap that reports it.
class Fault : public std::exception {
public:
    explicit Fault(int number) noexcept : number_(number) {}
    int Number() const noexcept { return number_; }
    const char* what() const noexcept override { return "run-time error"; }

private:
    int number_;
};

/// Throws the fault of a value that is no finite Single: 11 where a division by zero made it (the
/// floating status flags tell), 6 otherwise. Functions with a restricted domain (Sqr) raise 5 themselves.
[[noreturn]] void Raise_No_Single();

/// Forgets earlier floating exceptions, so that Raise_No_Single judges only what comes after.
void Clear_Floating_Status() noexcept;

/// A real number of the design: 32 bits at rest, a double in every expression; it rounds at the store.
class Single {
public:
    constexpr Single() noexcept = default;
    Single(double x) : v_(static_cast<float>(x))
    {
        if (!std::isfinite(v_)) [[unlikely]]
            Raise_No_Single();
    }
    operator double() const noexcept { return static_cast<double>(v_); }
    float Bits() const noexcept { return v_; }
    Single& operator+=(double x) { return *this = *this + x; }
    Single& operator-=(double x) { return *this = *this - x; }
    Single& operator*=(double x) { return *this = *this * x; }

private:
    float v_ = 0.0F;
};

/// An integer of the design: 16 bits and signed; what does not fit is error 6.
class Integer {
public:
    constexpr Integer() noexcept = default;
    template <std::integral T>
    Integer(T x) : v_(static_cast<std::int16_t>(x))
    {
        if (!std::in_range<std::int16_t>(x)) [[unlikely]]
            throw Fault{overflow};
    }
    template <std::floating_point T>
    Integer(T) = delete;  // a real becomes an integer through To_Integer, which says how it rounds
    operator int() const noexcept { return v_; }
    Integer& operator+=(int n) { return *this = Integer(v_ + n); }

private:
    std::int16_t v_ = 0;
};

/// Nearest 16-bit integer of x, ties to even; beyond 16 bits is error 6.
Integer To_Integer(double x);

/// A flag of the design: 16 bits, true = -1, false = 0.
class Flag {
public:
    constexpr Flag() noexcept = default;
    constexpr Flag(bool on) noexcept : v_(on ? std::int16_t{-1} : std::int16_t{0}) {}
    constexpr operator bool() const noexcept { return v_ != 0; }
    constexpr int Value() const noexcept { return v_; }

private:
    std::int16_t v_ = 0;
};

/// A 32-bit count.
using Long = std::int32_t;

/// Square root; error 5 for a negative argument.
double Sqr(double x);

/// x to the power y; error 5 for a negative x with a fractional y, error 11 for zero to a negative power.
double Power(double x, double y);

/// The bounds of one index, both included.
struct Bounds {
    int lo;
    int hi;
    constexpr bool Holds(int i) const noexcept { return lo <= i && i <= hi; }
};

/// Place of i within its bounds, counted from 0; outside is error 9.
constexpr std::size_t Checked_Place(int i, int lo, int hi)
{
    if (i < lo || i > hi) [[unlikely]]
        throw Fault{out_of_bounds};
    return static_cast<std::size_t>(i - lo);
}

/// One-dimensional array A(Lo..Hi), checked in release builds too.
template <class T, int Lo, int Hi>
class Bounded {
public:
    using Element = T;
    static constexpr std::array<Bounds, 1> bounds{{{Lo, Hi}}};

    T& operator()(int i) { return v_[Checked_Place(i, Lo, Hi)]; }
    const T& operator()(int i) const { return v_[Checked_Place(i, Lo, Hi)]; }
    void Fill(const T& x) { v_.fill(x); }

private:
    std::array<T, static_cast<std::size_t>(Hi - Lo + 1)> v_{};
};

/// Two-dimensional array A(Lo1..Hi1, Lo2..Hi2), the second index the fast one.
template <class T, int Lo1, int Hi1, int Lo2, int Hi2>
class Bounded2 {
public:
    using Element = T;
    static constexpr std::array<Bounds, 2> bounds{{{Lo1, Hi1}, {Lo2, Hi2}}};

    T& operator()(int i, int j) { return v_[Place(i, j)]; }
    const T& operator()(int i, int j) const { return v_[Place(i, j)]; }
    void Fill(const T& x) { v_.fill(x); }

private:
    static constexpr std::size_t Place(int i, int j)
    {
        return Checked_Place(i, Lo1, Hi1) * static_cast<std::size_t>(Hi2 - Lo2 + 1) + Checked_Place(j, Lo2, Hi2);
    }
    std::array<T, static_cast<std::size_t>((Hi1 - Lo1 + 1) * (Hi2 - Lo2 + 1))> v_{};
};

/// Three-dimensional array A(Lo1..Hi1, Lo2..Hi2, Lo3..Hi3), the last index the fast one.
template <class T, int Lo1, int Hi1, int Lo2, int Hi2, int Lo3, int Hi3>
class Bounded3 {
public:
    using Element = T;
    static constexpr std::array<Bounds, 3> bounds{{{Lo1, Hi1}, {Lo2, Hi2}, {Lo3, Hi3}}};

    T& operator()(int i, int j, int k) { return v_[Place(i, j, k)]; }
    const T& operator()(int i, int j, int k) const { return v_[Place(i, j, k)]; }

private:
    static constexpr std::size_t Place(int i, int j, int k)
    {
        return (Checked_Place(i, Lo1, Hi1) * static_cast<std::size_t>(Hi2 - Lo2 + 1) + Checked_Place(j, Lo2, Hi2)) *
                   static_cast<std::size_t>(Hi3 - Lo3 + 1) +
               Checked_Place(k, Lo3, Hi3);
    }
    std::array<T, static_cast<std::size_t>((Hi1 - Lo1 + 1) * (Hi2 - Lo2 + 1) * (Hi3 - Lo3 + 1))> v_{};
};

/// Array A(0..last) whose last index is set at run time, checked.
template <class T>
class Row {
public:
    using Element = T;

    /// Reallocates to 0..last, contents lost; a last below 0 or above most is error 9.
    void Dimension(int last, int most = 32767)
    {
        const std::size_t count = Checked_Place(last, 0, most) + 1;
        v_.assign(count, T{});
    }
    int Last() const noexcept { return static_cast<int>(v_.size()) - 1; }
    T& operator()(int p) { return v_[Checked_Place(p, 0, Last())]; }
    const T& operator()(int p) const { return v_[Checked_Place(p, 0, Last())]; }
    void Fill(const T& x) { v_.assign(v_.size(), x); }
    std::span<T> Points() noexcept { return v_; }
    std::span<const T> Points() const noexcept { return v_; }

private:
    std::vector<T> v_;
};

/// Array A(0..last_row, 0..last_point) whose bounds are set at run time, checked; a row is contiguous.
template <class T>
class Table {
public:
    using Element = T;

    /// Reallocates to (0..last_row, 0..last_point), contents lost; a bound below 0, or a point above most, is error 9.
    void Dimension(int last_row, int last_point, int most = 32767)
    {
        const std::size_t rows = Checked_Place(last_row, 0, 32767) + 1;
        const std::size_t points = Checked_Place(last_point, 0, most) + 1;
        v_.assign(rows * points, T{});
        last_row_ = last_row;
        last_point_ = last_point;
    }
    int Last_Row() const noexcept { return last_row_; }
    int Last_Point() const noexcept { return last_point_; }
    T& operator()(int row, int p) { return v_[Place(row, p)]; }
    const T& operator()(int row, int p) const { return v_[Place(row, p)]; }
    /// The points of one row, for a loop: the row is checked here, once.
    std::span<T> Points(int row) { return {&v_[Place(row, 0)], static_cast<std::size_t>(last_point_ + 1)}; }
    std::span<const T> Points(int row) const { return {&v_[Place(row, 0)], static_cast<std::size_t>(last_point_ + 1)}; }

private:
    std::size_t Place(int row, int p) const
    {
        return Checked_Place(row, 0, last_row_) * static_cast<std::size_t>(last_point_ + 1) +
               Checked_Place(p, 0, last_point_);
    }
    int last_row_ = -1;
    int last_point_ = -1;
    std::vector<T> v_;
};

}  // namespace lobemax
