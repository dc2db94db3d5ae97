#pragma once
// The HTML source viewer: fetches the raw source of an address (at once, with the main
// window's address, when it opens) and shows it as text, and hands it to the HTML editor.

#include "platform/controls.h"
#include "platform/form.h"
#include "platform/inet.h"

#include <cstdint>

class HTMLViewerFRM : public platform::Form {
public:
    HTMLViewerFRM();

    platform::Label Info{*this, "Info", {150, 150, 420, 180}, QStringLiteral("URL:")};
    platform::TextBox URL{*this, "URL", {600, 120, 3735, 285}, QStringLiteral("http://")};
    platform::CommandButton VS{*this, "VS", {4440, 120, 1695, 285}, QStringLiteral("View Source")};
    platform::CommandButton OpenInEd{*this, "OpenInEd", {6240, 120, 1695, 285}, QStringLiteral("Open In Editor")};
    platform::TextBox HTML{*this, "HTML", {120, 480, 7815, 6255}, {}, platform::TextBox::Lines::Multi};
    platform::Inet InetOne;
    // The theme's background, behind everything.
    platform::Image ImagePic{*this, "ImagePic", {0, 0, 8055, 6855}, platform::Image::Fit::Stretch};

    void VS_Click();
    void URL_KeyPress(std::int16_t& keyAscii);
    void OpenInEd_Click();

protected:
    void Form_Load() override;
    void Form_Unload(int& cancel) override;
};
