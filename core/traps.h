// SPDX-License-Identifier: GPL-3.0-or-later
/// The one error trap and the one error reporter.
#pragma once

#include <new>
#include <string>
#include <string_view>

#include "core/basic_types.h"

namespace lobemax {

/// Short description of a run-time error, as the reporter puts it in parentheses.
std::string Error_Description(int number);

/// The reporter's whole text for an error in a routine: the line with number, description and routine,
/// a line end, and the advice for that number, if any.
std::string Error_Text(int number, std::string_view routine);

/// Tells the user of an error in a routine and restores the pointer; error 7 also brings the Home screen up.
void Error_Report(int number, std::string_view routine);

/// Runs work; a fault goes to the reporter under the routine's name. Returns true when all went well.
template <class Work>
bool Trap(std::string_view routine, Work&& work)
{
    Clear_Floating_Status();
    try {
        work();
        return true;
    } catch (const Fault& fault) {
        Error_Report(fault.Number(), routine);
    } catch (const std::bad_alloc&) {
        Error_Report(out_of_memory, routine);
    } catch (const std::exception&) {
        Error_Report(internal_error, routine);
    }
    return false;
}

}  // namespace lobemax
