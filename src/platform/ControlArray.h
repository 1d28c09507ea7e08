#pragma once

#include "platform/RunTimeError.h"

#include <QString>

#include <cstddef>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace regalon {

/// A control that is drawn after a template.
template <typename T>
concept DesignedControl = requires(T& element, const T& design) {
    element.copyDesign(design);
    element.setVisible(false);
};

/// A control that can be taken out of use and come back without being made anew.
template <typename T>
concept ReusableControl = DesignedControl<T> && requires(T& element) {
    element.retire();
    element.revive();
};

/// Controls under one name, by index from 0. Element 0 is the template: it exists from the start and is never
/// unloaded. A loaded element takes over the design of the template through T::copyDesign where T has one,
/// and is hidden.
template <typename T>
class ControlArray {
public:
    /// Makes an element: the array's name and the index.
    using Maker = std::function<std::unique_ptr<T>(const QString& name, int index)>;

    /// Makes elements as T(name, index).
    explicit ControlArray(const QString& name)
        : ControlArray(name, [](const QString& elementName, int index) {
              return std::make_unique<T>(elementName, index);
          }) {}
    ControlArray(const QString& name, Maker make) : m_name(name), m_make(std::move(make)) {
        m_elements.push_back(m_make(m_name, 0));
    }
    ControlArray(const ControlArray&) = delete;
    ControlArray& operator=(const ControlArray&) = delete;

    const QString& name() const { return m_name; }

    /// Number of existing elements, the template among them.
    int Count() const { return m_count; }

    bool exists(int index) const {
        return index >= 0 && index < static_cast<int>(m_elements.size()) && m_elements[place(index)];
    }

    /// Makes the element `index` of at least 1. Raises 360 if it exists, 340 for a negative index.
    T& Load(int index) {
        if (index < 0)
            raiseMissing(index);
        if (exists(index))
            throw RunTimeError(RunTime::ObjectAlreadyLoaded);
        if (index >= static_cast<int>(m_elements.size()))
            m_elements.resize(place(index) + 1);
        std::unique_ptr<T>& element = m_elements[place(index)];
        element = takeWaiting(index);
        if (!element)
            element = made(index);
        if constexpr (DesignedControl<T>)
            element->copyDesign(*m_elements.front());
        ++m_count;
        return *element;
    }

    /// Destroys an element. Raises 340 if there is none and 362 for the template.
    void Unload(int index) {
        if (!exists(index))
            raiseMissing(index);
        if (index == 0)
            throw RunTimeError(RunTime::CannotUnloadDesignControl);
        if (m_reuse)
            keepWaiting(index);
        m_elements[place(index)].reset();
        --m_count;
        while (!m_elements.back())
            m_elements.pop_back();
    }

    /// While reuse is on, an unloaded element waits for the next Load of its index, which gives it the design
    /// like a new one; visibility and tag stay as they were, and whoever loads sets them. Turning reuse off
    /// destroys those that wait. For a plan that is removed and drawn again at once: most of what an element
    /// costs is its making, its hiding and its showing.
    void setReuse(bool reuse) requires ReusableControl<T> {
        m_reuse = reuse;
        if (!reuse)
            m_waiting.clear();
    }

    /// Retires the elements that wait. To be called before anybody can look at the controls.
    void retireWaiting() requires ReusableControl<T> {
        for (const std::unique_ptr<T>& element : m_waiting) {
            if (element)
                element->retire();
        }
    }

    /// Raises 340 if there is no such element.
    T& operator[](int index) { return *checked(index); }
    const T& operator[](int index) const { return *checked(index); }

    /// Calls `use` with each element in the order of the indexes, the template first.
    template <typename Use>
    void forEach(Use use) {
        for (const std::unique_ptr<T>& element : m_elements) {
            if (element)
                use(*element);
        }
    }

private:
    static std::size_t place(int index) { return static_cast<std::size_t>(index); }

    std::unique_ptr<T> made(int index) const {
        std::unique_ptr<T> element = m_make(m_name, index);
        if constexpr (DesignedControl<T>)
            element->setVisible(false);
        return element;
    }

    void keepWaiting(int index) {
        if constexpr (ReusableControl<T>) {
            if (m_waiting.size() < m_elements.size())
                m_waiting.resize(m_elements.size());
            m_waiting[place(index)] = std::move(m_elements[place(index)]);
        }
    }

    std::unique_ptr<T> takeWaiting(int index) {
        if (place(index) >= m_waiting.size() || !m_waiting[place(index)])
            return nullptr;
        if constexpr (ReusableControl<T>)
            m_waiting[place(index)]->revive();
        return std::move(m_waiting[place(index)]);
    }

    [[noreturn]] static void raiseMissing(int index) {
        throw RunTimeError(RunTime::ControlArrayElement,
                           QStringLiteral("Control array element '%1' doesn't exist").arg(index));
    }

    T* checked(int index) const {
        if (!exists(index))
            raiseMissing(index);
        return m_elements[place(index)].get();
    }

    QString m_name;
    Maker m_make;
    std::vector<std::unique_ptr<T>> m_elements;
    std::vector<std::unique_ptr<T>> m_waiting;
    bool m_reuse = false;
    int m_count = 1;
};

}  // namespace regalon
