#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <utility>

namespace stintbook {

/// Who is told that something observable has changed; they read the new state themselves. On one thread, that
/// of whoever holds the list. A listener may add and remove others, and itself, while it is told.
class Listeners {
    using List = std::map<std::uint64_t, std::function<void()>>;

public:
    /// As long as it lives, its listener is told. It may outlive the list.
    class Subscription {
    public:
        Subscription() = default;
        ~Subscription() { end(); }
        Subscription(Subscription&& other) noexcept
            : m_list(std::exchange(other.m_list, {}))
            , m_key(other.m_key)
        {
        }
        Subscription& operator=(Subscription&& other) noexcept
        {
            std::swap(m_list, other.m_list);
            std::swap(m_key, other.m_key);
            return *this;
        }
        Subscription(const Subscription&) = delete;
        Subscription& operator=(const Subscription&) = delete;

    private:
        friend class Listeners;
        Subscription(std::weak_ptr<List> list, std::uint64_t key)
            : m_list(std::move(list))
            , m_key(key)
        {
        }
        void end()
        {
            if (const auto list = m_list.lock())
                list->erase(m_key);
        }

        std::weak_ptr<List> m_list;
        std::uint64_t m_key = 0;
    };

    [[nodiscard]] Subscription add(std::function<void()> listener)
    {
        const auto key = m_nextKey++;
        m_list->emplace(key, std::move(listener));
        return {m_list, key};
    }

    void tell() const
    {
        // Those who come meanwhile have read the new state already; those who go are not told any more.
        const auto list = m_list;
        const auto end = m_nextKey;
        for (auto next = list->begin(); next != list->end() && next->first < end;) {
            const auto key = next->first;
            const auto listener = next->second;
            listener();
            next = list->upper_bound(key);
        }
    }

private:
    std::shared_ptr<List> m_list = std::make_shared<List>();
    std::uint64_t m_nextKey = 0;
};

} // namespace stintbook
