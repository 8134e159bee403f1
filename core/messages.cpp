// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/messages.h"

#include <ctime>
#include <utility>

namespace lobemax {

namespace {

Host installed;
thread_local const Host* of_thread = nullptr;

std::string Clock_Text(const char* format)
{
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    char text[32];
    const std::size_t length = std::strftime(text, sizeof text, format, &local);
    return {text, length};
}

}  // namespace

bool Offers(Buttons buttons, Answer answer)
{
    switch (buttons) {
    case Buttons::OK:
        return answer == Answer::OK;
    case Buttons::OK_Cancel:
        return answer == Answer::OK || answer == Answer::Cancel;
    case Buttons::Yes_No:
        return answer == Answer::Yes || answer == Answer::No;
    case Buttons::Yes_No_Cancel:
        return answer == Answer::Yes || answer == Answer::No || answer == Answer::Cancel;
    case Buttons::Abort_Retry_Ignore:
        return answer == Answer::Abort || answer == Answer::Retry || answer == Answer::Ignore;
    case Buttons::Retry_Cancel:
        return answer == Answer::Retry || answer == Answer::Cancel;
    }
    return false;
}

Answer Usual_Answer(Buttons buttons)
{
    switch (buttons) {
    case Buttons::Yes_No:
    case Buttons::Yes_No_Cancel:
        return Answer::Yes;
    case Buttons::Abort_Retry_Ignore:
        return Answer::Ignore;
    case Buttons::Retry_Cancel:
        return Answer::Cancel;
    case Buttons::OK:
    case Buttons::OK_Cancel:
        break;
    }
    return Answer::OK;
}

const char* Button_Word(Answer answer)
{
    switch (answer) {
    case Answer::OK:
        return "OK";
    case Answer::Cancel:
        return "Cancel";
    case Answer::Abort:
        return "Abort";
    case Answer::Retry:
        return "Retry";
    case Answer::Ignore:
        return "Ignore";
    case Answer::Yes:
        return "Yes";
    case Answer::No:
        return "No";
    }
    return "";
}

Host Install_Host(Host host)
{
    return std::exchange(installed, std::move(host));
}

const Host& Installed_Host()
{
    return of_thread == nullptr ? installed : *of_thread;
}

Thread_Host::Thread_Host(const Host& host) noexcept : before_(std::exchange(of_thread, &host)) {}

Thread_Host::~Thread_Host()
{
    of_thread = before_;
}

Answer Show_Message(const std::string& text, Buttons buttons, Symbol symbol)
{
    return Show_Message(text, buttons, symbol, Usual_Answer(buttons));
}

Answer Show_Message(const std::string& text, Buttons buttons, Symbol symbol, Answer default_answer)
{
    return Show_Message(Message{text, buttons, symbol, default_answer});
}

Answer Show_Message(const Message& box)
{
    const Host& host = Installed_Host();
    if (!host.messenger)
        return Usual_Answer(box.buttons);
    const Answer answer = host.messenger(box);
    return Offers(box.buttons, answer) ? answer : Usual_Answer(box.buttons);
}

void Show_Wait_Pointer()
{
    if (const Host& host = Installed_Host(); host.wait_pointer)
        host.wait_pointer(true);
}

void Restore_Pointer()
{
    if (const Host& host = Installed_Host(); host.wait_pointer)
        host.wait_pointer(false);
}

void Refresh_Screens()
{
    if (const Host& host = Installed_Host(); host.refresh)
        host.refresh();
}

bool Stop_Wished(double share_done)
{
    const Host& host = Installed_Host();
    return host.progress && host.progress(share_done);
}

std::string Today_Text()
{
    const Host& host = Installed_Host();
    return host.date ? host.date() : Clock_Text("%Y-%m-%d");
}

std::string Now_Text()
{
    const Host& host = Installed_Host();
    return host.time ? host.time() : Clock_Text("%H:%M:%S");
}

}  // namespace lobemax
