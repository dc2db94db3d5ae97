#pragma once
// Controls that share a name and one set of handlers, each receiving the element's index.
// Elements are made at design time (add) or loaded and unloaded while the program runs
// (Load, Unload). Works for every control kind, windowless lines and shapes included.
//
// Elements live in place in a deque: loading one never moves the others, and a long array of
// small elements (a doodle's thousands of lines) costs no allocation per element.

#include "control.h"
#include "errors.h"

#include <cstdint>
#include <deque>
#include <functional>
#include <optional>

namespace platform {

using IndexHandler = std::function<void(int index)>;
using IndexMouseHandler = std::function<void(int index, int button, int shift, double x, double y)>;
using IndexKeyPressHandler = std::function<void(int index, std::int16_t& keyAscii)>;

template <class T>
class ControlArray {
public:
    ControlArray() = default;
    ControlArray(const ControlArray&) = delete;
    ControlArray& operator=(const ControlArray&) = delete;
    // The last element goes first, so containers that list their elements drop each at once.
    ~ControlArray()
    {
        while (!m_slots.empty())
            m_slots.pop_back();
    }

    // Makes the design-time element index; args are the element's constructor arguments after
    // the container and the name.
    template <class Parent, class... Args>
    T& add(Parent& parent, const char* name, int index, Args&&... args)
    {
        std::optional<T>& slot = slotFor(index);
        if (slot)
            raiseError(ErrObjectAlreadyLoaded);
        slot.emplace(parent, name, std::forward<Args>(args)...);
        return adopt(*slot, index);
    }

    // Loads element index at run time as a copy of the lowest element (T::loadFrom says what
    // is copied); an index already loaded raises "Object already loaded" (360).
    T& Load(int index)
    {
        if (Count() == 0)
            raiseError(ErrNoSuchElement);
        const T& first = (*this)(LBound());
        std::optional<T>& slot = slotFor(index);
        if (slot)
            raiseError(ErrObjectAlreadyLoaded);
        T::loadFrom(slot, first);
        return adopt(*slot, index);
    }

    // An index with no element raises "Control array element doesn't exist" (340).
    void Unload(int index)
    {
        element(index).reset();
        --m_count;
    }

    T& operator()(int index) const { return *element(index); }
    bool exists(int index) const { return index >= 0 && index < int(m_slots.size()) && m_slots[index]; }
    int Count() const { return m_count; }
    int LBound() const
    {
        for (int i = 0; i < int(m_slots.size()); ++i)
            if (m_slots[i])
                return i;
        return 0;
    }
    int UBound() const
    {
        for (int i = int(m_slots.size()) - 1; i >= 0; --i)
            if (m_slots[i])
                return i;
        return -1;
    }

    // The loaded elements in index order, for walking the array: for (Label& label : Info).
    class Iterator {
    public:
        using Slots = std::deque<std::optional<T>>;
        Iterator(const Slots& all, std::size_t at) : m_slots(&all), m_at(at) { skipEmpty(); }
        T& operator*() const { return const_cast<T&>(*(*m_slots)[m_at]); }
        Iterator& operator++()
        {
            ++m_at;
            skipEmpty();
            return *this;
        }
        bool operator==(const Iterator& other) const { return m_at == other.m_at; }

    private:
        void skipEmpty()
        {
            while (m_at < m_slots->size() && !(*m_slots)[m_at])
                ++m_at;
        }
        const Slots* m_slots;
        std::size_t m_at;
    };
    Iterator begin() const { return Iterator(m_slots, 0); }
    Iterator end() const { return Iterator(m_slots, m_slots.size()); }

    // The handlers of every element, present and to come; each receives the element's index.
    void onClick(IndexHandler h) { m_click = std::move(h); rewire(); }
    void onDblClick(IndexHandler h) { m_dblClick = std::move(h); rewire(); }
    void onChange(IndexHandler h) { m_change = std::move(h); rewire(); }
    void onMouseDown(IndexMouseHandler h) { m_mouseDown = std::move(h); rewire(); }
    void onMouseUp(IndexMouseHandler h) { m_mouseUp = std::move(h); rewire(); }
    void onMouseMove(IndexMouseHandler h) { m_mouseMove = std::move(h); rewire(); }
    void onKeyPress(IndexKeyPressHandler h) { m_keyPress = std::move(h); rewire(); }

private:
    std::optional<T>& slotFor(int index)
    {
        if (index < 0 || index > kMaxIndex)
            raiseError(ErrNoSuchElement);
        while (int(m_slots.size()) <= index)
            m_slots.emplace_back();
        return m_slots[index];
    }

    std::optional<T>& element(int index) const
    {
        if (!exists(index))
            raiseError(ErrNoSuchElement);
        return const_cast<std::optional<T>&>(m_slots[index]);
    }

    T& adopt(T& element, int index)
    {
        ++m_count;
        if constexpr (std::is_base_of_v<Control, T>) {
            element.setIndex(index);
            wire(element, index);
        }
        return element;
    }

    void rewire()
    {
        if constexpr (std::is_base_of_v<Control, T>) {
            for (int i = 0; i < int(m_slots.size()); ++i)
                if (m_slots[i])
                    wire(*m_slots[i], i);
        }
    }

    void wire(Control& c, int index)
    {
        if (m_click)
            c.onClick([this, index] { m_click(index); });
        if (m_dblClick)
            c.onDblClick([this, index] { m_dblClick(index); });
        if (m_change)
            c.onChange([this, index] { m_change(index); });
        if (m_mouseDown)
            c.onMouseDown([this, index](int b, int s, double x, double y) { m_mouseDown(index, b, s, x, y); });
        if (m_mouseUp)
            c.onMouseUp([this, index](int b, int s, double x, double y) { m_mouseUp(index, b, s, x, y); });
        if (m_mouseMove)
            c.onMouseMove([this, index](int b, int s, double x, double y) { m_mouseMove(index, b, s, x, y); });
        if (m_keyPress)
            c.onKeyPress([this, index](std::int16_t& key) { m_keyPress(index, key); });
    }

    // The classic runtime's highest control-array index.
    static constexpr int kMaxIndex = 32767;

    std::deque<std::optional<T>> m_slots;
    int m_count = 0;
    IndexHandler m_click, m_dblClick, m_change;
    IndexMouseHandler m_mouseDown, m_mouseUp, m_mouseMove;
    IndexKeyPressHandler m_keyPress;
};

} // namespace platform
