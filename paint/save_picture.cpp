// SPDX-License-Identifier: GPL-3.0-or-later
#include "paint/save_picture.h"

#include "core/messages.h"

namespace lobemax::paint {

void Save_Picture_As(const std::string& title, const Picture_Writer& write)
{
    File_Dialog dialog;
    dialog.title = title;
    dialog.filter = "PNG (*.png)|*.png|SVG (*.svg)|*.svg|PDF (*.pdf)|*.pdf";
    dialog.overwrite_prompt = true;
    const Host& host = Installed_Host();
    const std::optional<std::string> path = host.save_dialog ? host.save_dialog(dialog) : std::nullopt;
    if (!path)
        return;
    std::string why;
    if (!write(*path, why))
        Show_Message("The picture could not be saved as\n" + *path + "\n" + why, Buttons::OK, Symbol::exclamation);
}

void Save_Pages_As(const std::string& title, const std::string& suggestion, const Page_Maker& make, bool letter)
{
    const Host& host = Installed_Host();
    const std::optional<std::string> path =
        host.save_dialog ? host.save_dialog({title, "PDF (*.pdf)|*.pdf", 1, suggestion, true}) : std::nullopt;
    if (!path)
        return;
    std::string why;
    if (!Save_Pages(make, letter, *path, &why))
        Show_Message("The pages could not be saved as\n" + *path + "\n" + why, Buttons::OK, Symbol::exclamation);
}

}  // namespace lobemax::paint
