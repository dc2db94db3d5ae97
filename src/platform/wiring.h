#pragma once
// A window's handlers attached to its controls from one table, read as the list of what runs
// when: an event, the control (menu entry, timer, control array) that raises it, the handler.
//
//     const platform::Wiring<HomePageFRM> kWiring[] = {
//         {OnKeyPress, &HomePageFRM::Data, &HomePageFRM::Data_KeyPress},
//         {OnClick, &HomePageFRM::OkCMD, &HomePageFRM::OkCMD_Click},
//     };
//     platform::wire(*this, kWiring); // in the window's constructor
//
// The handler takes what the event gives (a control array's Index, KeyPress's keyAscii); a
// handler shared by several menu entries may be given a fixed value instead:
// {OnClick, &MainFRM::SmallMNU, &MainFRM::TextSize_Click, 1}.

#include <functional>
#include <utility>

namespace platform {

// The events a table names; each reaches the control's own onEvent.
struct OnClickEvent { static void on(auto& source, auto handler) { source.onClick(std::move(handler)); } };
struct OnDblClickEvent { static void on(auto& source, auto handler) { source.onDblClick(std::move(handler)); } };
struct OnChangeEvent { static void on(auto& source, auto handler) { source.onChange(std::move(handler)); } };
struct OnKeyPressEvent { static void on(auto& source, auto handler) { source.onKeyPress(std::move(handler)); } };
struct OnTimerEvent { static void on(auto& source, auto handler) { source.onTimer(std::move(handler)); } };
struct OnStatusTextChangeEvent { static void on(auto& source, auto handler) { source.onStatusTextChange(std::move(handler)); } };
struct OnProgressChangeEvent { static void on(auto& source, auto handler) { source.onProgressChange(std::move(handler)); } };
struct OnDownloadBeginEvent { static void on(auto& source, auto handler) { source.onDownloadBegin(std::move(handler)); } };
struct OnDownloadCompleteEvent { static void on(auto& source, auto handler) { source.onDownloadComplete(std::move(handler)); } };
struct OnNavigateComplete2Event { static void on(auto& source, auto handler) { source.onNavigateComplete2(std::move(handler)); } };
struct OnDocumentCompleteEvent { static void on(auto& source, auto handler) { source.onDocumentComplete(std::move(handler)); } };
struct OnNewWindow2Event { static void on(auto& source, auto handler) { source.onNewWindow2(std::move(handler)); } };

inline constexpr OnClickEvent OnClick;
inline constexpr OnDblClickEvent OnDblClick;
inline constexpr OnChangeEvent OnChange;
inline constexpr OnKeyPressEvent OnKeyPress;
inline constexpr OnTimerEvent OnTimer;
inline constexpr OnStatusTextChangeEvent OnStatusTextChange;
inline constexpr OnProgressChangeEvent OnProgressChange;
inline constexpr OnDownloadBeginEvent OnDownloadBegin;
inline constexpr OnDownloadCompleteEvent OnDownloadComplete;
inline constexpr OnNavigateComplete2Event OnNavigateComplete2;
inline constexpr OnDocumentCompleteEvent OnDocumentComplete;
inline constexpr OnNewWindow2Event OnNewWindow2;

// One row of a window's table.
template <class Window>
class Wiring {
public:
    template <class Event, class Source, class... Args>
    Wiring(Event, Source Window::*source, void (Window::*handler)(Args...))
        : m_attach([source, handler](Window& window) {
              Event::on(window.*source, [&window, handler](Args... args) { (window.*handler)(std::forward<Args>(args)...); });
          })
    {
    }

    template <class Event, class Source, class Value>
    Wiring(Event, Source Window::*source, void (Window::*handler)(Value), Value value)
        : m_attach([source, handler, value](Window& window) {
              Event::on(window.*source, [&window, handler, value] { (window.*handler)(value); });
          })
    {
    }

    void attach(Window& window) const { m_attach(window); }

private:
    std::function<void(Window&)> m_attach;
};

template <class Window, std::size_t N>
void wire(Window& window, const Wiring<Window> (&table)[N])
{
    for (const Wiring<Window>& row : table)
        row.attach(window);
}

} // namespace platform
