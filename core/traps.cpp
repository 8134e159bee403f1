// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/traps.h"

#include "core/messages.h"

namespace lobemax {

namespace {

constexpr const char* save_first = "You should try to save your model from the Home Screen's 'File' pulldown menu, ";
constexpr const char* close_others = "It may help to close other programs that are running at the same time.";
constexpr const char* good_luck = "Good luck! ";

std::string Advice(int number)
{
    switch (number) {
    case 7:
        return std::string(save_first) + "\nthen Quit this program and restart it to clear the memory.\n" +
               close_others + '\n' + good_luck;
    case 28:
        return std::string(save_first) + "\nthen Quit this program and restart it to clear the stacks.\n" +
               close_others + '\n' + good_luck;
    case 52:
        return "The filename clicked on has a problem.  Try opening it from within the program.";
    case 53:
    case 64:
        return "There are no files with your chosen name in the selected directory";
    case 57:
        return "Device I/O error- bad drive or disk - please try another";
    case 61:
        return " The floppy disk in the drive is full - please substitute another";
    case 71:
        return "Disk not ready - is the drive empty or its door open?";
    case 32678:
        return "Out of memory.  Close other programs and retry.";
    default:
        return {};
    }
}

}  // namespace

std::string Error_Description(int number)
{
    switch (number) {
    case 5:
        return "Invalid argument";
    case 6:
        return "Overflow";
    case 7:
    case 32678:
        return "Out of memory";
    case 9:
        return "Index out of bounds";
    case 11:
        return "Division by zero";
    case 13:
        return "Type mismatch";
    case 28:
        return "Out of stack space";
    case 51:
        return "Internal error";
    case 52:
        return "Bad file name";
    case 53:
        return "File not found";
    case 57:
        return "Device I/O error";
    case 59:
        return "Bad record length";
    case 61:
        return "Disk full";
    case 62:
        return "Input past end of file";
    case 64:
        return "File not found in directory";
    case 70:
        return "Permission denied";
    case 71:
        return "Disk not ready";
    case 75:
        return "Path or file access error";
    case 482:
        return "Printer error";
    default:
        return "Unknown error";
    }
}

std::string Error_Text(int number, std::string_view routine)
{
    return "Error " + std::to_string(number) + "   (" + Error_Description(number) + ")  has occurred in " +
           std::string(routine) + '\n' + Advice(number);
}

void Error_Report(int number, std::string_view routine)
{
    if (Installed_Host().error_reported)
        Installed_Host().error_reported(number);
    Show_Message(Error_Text(number, routine), Buttons::OK,
                 number == out_of_memory ? Symbol::none : Symbol::information);
    if (number == out_of_memory && Installed_Host().show_home)
        Installed_Host().show_home();
    Restore_Pointer();
}

}  // namespace lobemax
