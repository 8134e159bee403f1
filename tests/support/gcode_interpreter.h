// SPDX-License-Identifier: GPL-3.0-or-later
/// A plain machine control that runs a program block by block and keeps the moves: nothing of the writer is used.
#pragma once

#include <cmath>
#include <cstdlib>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

namespace lobemax::testing {

/// A move of the tool's centre, compensation carried out.
struct Tool_Move {
    double from[4] = {0, 0, 0, 0};  // X, Y, Z, A
    double to[4] = {0, 0, 0, 0};
    bool rapid = false;
    bool arc = false;
    bool left = false;  // counterclockwise
    double cx = 0.0;
    double cy = 0.0;
    double feed = 0.0;  // F in force
    bool inverse = false;
    int compensated = 0;  // 40, 41, 42 as the block was run
    bool spindle = false;

    double Radius() const { return std::hypot(from[0] - cx, from[1] - cy); }
    /// Signed turn of an arc, radians.
    double Turn() const
    {
        const double a = std::atan2(from[1] - cy, from[0] - cx);
        const double b = std::atan2(to[1] - cy, to[0] - cx);
        double turn = b - a;
        const double whole = 2.0 * std::acos(-1.0);
        if (left && turn <= 0.0)
            turn += whole;
        if (!left && turn >= 0.0)
            turn -= whole;
        return turn;
    }
    double Plane_Length() const
    {
        return arc ? std::abs(Turn()) * Radius() : std::hypot(to[0] - from[0], to[1] - from[1]);
    }
    /// Place and unit direction at a share of the move.
    void At(double share, double& x, double& y, double& dx, double& dy) const
    {
        if (!arc) {
            x = from[0] + share * (to[0] - from[0]);
            y = from[1] + share * (to[1] - from[1]);
            const double length = Plane_Length();
            dx = length > 0.0 ? (to[0] - from[0]) / length : 0.0;
            dy = length > 0.0 ? (to[1] - from[1]) / length : 0.0;
            return;
        }
        const double angle = std::atan2(from[1] - cy, from[0] - cx) + share * Turn();
        const double r = Radius();
        x = cx + r * std::cos(angle);
        y = cy + r * std::sin(angle);
        dx = left ? -std::sin(angle) : std::sin(angle);
        dy = left ? std::cos(angle) : -std::cos(angle);
    }
};

/// What a program does. @throws std::runtime_error where a control would stop
class Gcode_Interpreter {
public:
    /// @param radii  of tools by the number of D
    explicit Gcode_Interpreter(std::map<int, double> radii = {}) : radii_(std::move(radii)) {}

    const std::vector<Tool_Move>& Run(const std::string& program)
    {
        std::size_t begin = 0;
        while (begin < program.size() && !ended_) {
            std::size_t end = program.find('\n', begin);
            if (end == std::string::npos)
                end = program.size();
            std::string line = program.substr(begin, end - begin);
            if (!line.empty() && line.back() == '\r')
                line.pop_back();
            Block(line);
            begin = end + 1;
        }
        if (percents_ != 1 || !ended_)
            throw std::runtime_error("no frame of % and M30");
        Compensate();
        return moves_;
    }

    const std::vector<std::string>& Comments() const { return comments_; }
    bool Inch() const { return inch_; }
    int Tool() const { return tool_; }
    double Speed() const { return speed_; }
    bool Coolant_Was_On() const { return coolant_; }
    int Program_Number() const { return number_; }
    int Last_Line_Number() const { return line_number_; }

private:
    static bool Has(const std::multimap<char, double>& words, char letter) { return words.count(letter) > 0; }

    void Block(const std::string& line)
    {
        if (line.empty())
            return;
        if (line == "%") {
            ++percents_;
            return;
        }
        if (percents_ == 0)
            throw std::runtime_error("before the first %");
        std::multimap<char, double> words;
        std::size_t i = 0;
        while (i < line.size()) {
            const char c = line[i];
            if (c == ' ') {
                ++i;
            } else if (c == '(') {
                const std::size_t end = line.find(')', i);
                if (end == std::string::npos || line.find('(', i + 1) < end)
                    throw std::runtime_error("comment that does not end: " + line);
                comments_.push_back(line.substr(i + 1, end - i - 1));
                i = end + 1;
            } else if (c >= 'A' && c <= 'Z') {
                char* rest = nullptr;
                const double value = std::strtod(line.c_str() + i + 1, &rest);
                const auto used = static_cast<std::size_t>(rest - line.c_str());
                if (used == i + 1)
                    throw std::runtime_error("word without a number: " + line);
                if (c != 'G' && c != 'M' && Has(words, c))
                    throw std::runtime_error("a word twice: " + line);
                words.emplace(c, value);
                i = used;
            } else {
                throw std::runtime_error("no word: " + line);
            }
        }
        Obey(words, line);
    }

    void Obey(const std::multimap<char, double>& words, const std::string& line)
    {
        for (const auto& [letter, value] : words) {
            switch (letter) {
            case 'N':
                if (value <= line_number_)
                    throw std::runtime_error("line numbers do not rise");
                line_number_ = static_cast<int>(value);
                break;
            case 'O':
                number_ = static_cast<int>(value);
                break;
            case 'T':
                tool_ = static_cast<int>(value);
                break;
            case 'S':
                speed_ = value;
                break;
            case 'D':
                d_ = static_cast<int>(value);
                break;
            case 'G':
                Mode(static_cast<int>(value), line);
                break;
            case 'M':
                Machine(static_cast<int>(value), line);
                break;
            case 'F':
                if (!(value > 0.0))
                    throw std::runtime_error("no feed: " + line);
                feed_ = value;
                break;
            case 'X':
            case 'Y':
            case 'Z':
            case 'A':
            case 'I':
            case 'J':
                break;
            default:
                throw std::runtime_error("unknown word: " + line);
            }
        }
        if (!Has(words, 'X') && !Has(words, 'Y') && !Has(words, 'Z') && !Has(words, 'A'))
            return;
        Move(words, line);
    }

    void Mode(int g, const std::string& line)
    {
        switch (g) {
        case 0:
        case 1:
        case 2:
        case 3:
            motion_ = g;
            break;
        case 17:
            break;
        case 20:
        case 21:
            inch_ = g == 20;
            unit_ = true;
            break;
        case 40:
        case 41:
        case 42:
            compensation_ = g;
            break;
        case 90:
        case 91:
            absolute_ = g == 90;
            break;
        case 93:
        case 94:
            inverse_ = g == 93;
            feed_ = 0.0;
            break;
        default:
            throw std::runtime_error("unknown G: " + line);
        }
    }

    void Machine(int m, const std::string& line)
    {
        switch (m) {
        case 3:
            spindle_ = true;
            break;
        case 5:
            spindle_ = false;
            break;
        case 6:
        case 9:
            break;
        case 8:
            coolant_ = true;
            break;
        case 30:
            ended_ = true;
            break;
        default:
            throw std::runtime_error("unknown M: " + line);
        }
    }

    void Move(const std::multimap<char, double>& words, const std::string& line)
    {
        constexpr char axes[] = {'X', 'Y', 'Z', 'A'};
        if (!unit_)
            throw std::runtime_error("a move before G20 or G21");
        Tool_Move move;
        for (int k = 0; k < 4; ++k) {
            move.from[k] = at_[k];
            const auto word = words.find(axes[k]);
            if (word != words.end())
                at_[k] = absolute_ ? word->second : at_[k] + word->second;
            move.to[k] = at_[k];
        }
        move.rapid = motion_ == 0;
        move.arc = motion_ >= 2;
        move.left = motion_ == 3;
        move.feed = feed_;
        move.inverse = inverse_;
        move.compensated = compensation_;
        move.spindle = spindle_ && speed_ > 0.0;
        if (!move.rapid && feed_ == 0.0)
            throw std::runtime_error("no feed: " + line);
        if (inverse_) {
            if (!move.rapid && !Has(words, 'F'))
                throw std::runtime_error("inverse time wants F in every block: " + line);
        }
        if (move.arc) {
            const auto i = words.find('I');
            const auto j = words.find('J');
            if (i == words.end() && j == words.end())
                throw std::runtime_error("an arc without a centre: " + line);
            move.cx = move.from[0] + (i == words.end() ? 0.0 : i->second);
            move.cy = move.from[1] + (j == words.end() ? 0.0 : j->second);
            const double end = std::hypot(move.to[0] - move.cx, move.to[1] - move.cy);
            const double half_digit = inch_ ? 0.5e-5 : 0.5e-4;
            if (std::abs(end - move.Radius()) > half_digit * 1.0001)
                throw std::runtime_error("radii of an arc disagree: " + line);
            if (std::hypot(move.to[0] - move.from[0], move.to[1] - move.from[1]) == 0.0)
                throw std::runtime_error("an arc of no length: " + line);
        }
        d_of_.push_back(d_);
        moves_.push_back(move);
    }

    /// Moves with compensation aside by the tool's radius, their approach and departure joined.
    void Compensate()
    {
        std::vector<Tool_Move> done = moves_;
        const auto aside = [&](const Tool_Move& move, double radius, double share, double& x, double& y) {
            double dx = 0.0;
            double dy = 0.0;
            move.At(share, x, y, dx, dy);
            const double side = move.compensated == 41 ? 1.0 : -1.0;
            x += side * radius * -dy;
            y += side * radius * dx;
        };
        for (std::size_t i = 0; i < moves_.size(); ++i) {
            const Tool_Move& move = moves_[i];
            const bool on = move.compensated != 40;
            const bool was_on = i > 0 && moves_[i - 1].compensated != 40;
            if (!on && !was_on)
                continue;
            const double R = Radius_of(d_of_[i]);
            if (on && !was_on) {  // approach: ends aside of where the next one starts
                if (move.arc || i + 1 >= moves_.size())
                    throw std::runtime_error("compensation has to start on a straight move");
                if (move.Plane_Length() < R)
                    throw std::runtime_error("compensation starts on too short a move");
                aside(moves_[i + 1], R, 0.0, done[i].to[0], done[i].to[1]);
                continue;
            }
            if (!on) {
                if (move.arc)
                    throw std::runtime_error("compensation has to end on a straight move");
                aside(moves_[i - 1], R, 1.0, done[i].from[0], done[i].from[1]);
                continue;
            }
            aside(move, R, 0.0, done[i].from[0], done[i].from[1]);
            aside(move, R, 1.0, done[i].to[0], done[i].to[1]);
            if (move.arc && move.left == (move.compensated == 41) && move.Radius() <= R)
                throw std::runtime_error("the tool does not go into an arc");
        }
        moves_ = std::move(done);
    }

    double Radius_of(int d) const
    {
        const auto radius = radii_.find(d);
        if (radius == radii_.end())
            throw std::runtime_error("no radius for D");
        return radius->second;
    }

    std::map<int, double> radii_;
    std::vector<Tool_Move> moves_;
    std::vector<int> d_of_;
    std::vector<std::string> comments_;
    double at_[4] = {0, 0, 0, 0};
    int motion_ = 0;
    int compensation_ = 40;
    int percents_ = 0;
    int number_ = 0;
    int line_number_ = 0;
    int tool_ = 0;
    int d_ = 0;
    double speed_ = 0.0;
    double feed_ = 0.0;
    bool absolute_ = true;
    bool inverse_ = false;
    bool inch_ = false;
    bool unit_ = false;
    bool spindle_ = false;
    bool coolant_ = false;
    bool ended_ = false;
};

}  // namespace lobemax::testing
