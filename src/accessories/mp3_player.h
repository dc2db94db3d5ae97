#pragma once
// The MP3 player: the hosted media player with its own display and transport controls, and
// three small buttons at the right edge (close, minimise, open another file). It asks for a
// file as it opens, closes again when that first question is cancelled, and floats above
// other windows.

#include "platform/common_dialog.h"
#include "platform/controls.h"
#include "platform/form.h"
#include "platform/media_player.h"

class MP3PlayerFRM : public platform::Form {
public:
    MP3PlayerFRM();

    platform::MediaPlayer Player{*this, "Player", {0, 0, 4095, 2190}, platform::MediaPlayer::Controls::Shown};
    platform::CommandButton ExitMe{*this, "ExitMe", {4080, 0, 375, 375}, QStringLiteral("X")};
    platform::CommandButton MiniMe{*this, "MiniMe", {4080, 380, 375, 360}, QStringLiteral("-")};
    platform::CommandButton OpenMore{*this, "OpenMore", {4080, 750, 375, 1440}, QStringLiteral("1")};
    platform::CommonDialog cdlGetFile;

    void ExitMe_Click();
    void MiniMe_Click();
    void OpenMore_Click();

protected:
    void Form_Load() override;
    void Form_Unload(int& cancel) override;
};
