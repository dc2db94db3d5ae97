#pragma once
// Controls that share a name and one handler, which receives the element's index.

#include "control.h"
#include "errors.h"

#include <functional>
#include <map>
#include <memory>

namespace platform {

template <class T>
class ControlArray {
public:
    // Makes element index; args are the element's constructor arguments after the container
    // and the name, without the index.
    template <class... Args>
    T& add(Container& parent, const char* name, int index, Args&&... args)
    {
        auto element = std::make_unique<T>(parent, name, std::forward<Args>(args)..., index);
        T& ref = *element;
        m_elements[index] = std::move(element);
        wire(ref);
        return ref;
    }

    // An index with no element raises "Control array element doesn't exist" (340).
    T& operator()(int index) const
    {
        const auto it = m_elements.find(index);
        if (it == m_elements.end())
            raiseError(ErrNoSuchElement);
        return *it->second;
    }
    int Count() const { return int(m_elements.size()); }
    int LBound() const { return m_elements.empty() ? 0 : m_elements.begin()->first; }
    int UBound() const { return m_elements.empty() ? -1 : m_elements.rbegin()->first; }

    void onClick(std::function<void(int)> handler)
    {
        m_click = std::move(handler);
        for (auto& [index, element] : m_elements)
            wire(*element);
    }

private:
    void wire(T& element)
    {
        if (m_click)
            element.onClick([this, index = element.Index()] { m_click(index); });
    }

    std::map<int, std::unique_ptr<T>> m_elements;
    std::function<void(int)> m_click;
};

} // namespace platform
