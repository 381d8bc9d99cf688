// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>

namespace tessaro {

/// The links of an object that stands in a List. An object stands in one list at a time.
struct ListNode {
    ListNode* prev = nullptr;
    ListNode* next = nullptr;

    ListNode() = default;
    // Links belong to the place in a list, not to the value: a copy starts unlinked.
    ListNode(const ListNode&) noexcept {}
    ListNode& operator=(const ListNode&) noexcept { return *this; }

protected:
    ~ListNode() = default;
};

/// The name of a list element: the address of its links, null for "none". It stays valid for the
/// element's whole life, whatever list holds it.
using POSITION = ListNode*;

/// A doubly linked list through the elements themselves (T derives from ListNode). It does not own
/// its elements; owners delete them. Every operation but `at` and `find` takes constant time.
template <class T>
class List {
public:
    List() = default;
    List(const List&) = delete;
    List& operator=(const List&) = delete;

    [[nodiscard]] std::size_t count() const noexcept { return m_count; }
    [[nodiscard]] bool empty() const noexcept { return m_count == 0; }
    [[nodiscard]] T* head() const noexcept { return get(m_head); }
    [[nodiscard]] T* tail() const noexcept { return get(m_tail); }

    [[nodiscard]] static T* get(POSITION pos) noexcept { return static_cast<T*>(pos); }
    [[nodiscard]] static T* next(const T* e) noexcept { return get(links(e)->next); }
    [[nodiscard]] static T* prev(const T* e) noexcept { return get(links(e)->prev); }

    void addHead(T* e) noexcept { link(e, nullptr, m_head); }
    void addTail(T* e) noexcept { link(e, m_tail, nullptr); }
    void insertAfter(T* at, T* e) noexcept { link(e, at, links(at)->next); }
    void insertBefore(T* at, T* e) noexcept { link(e, links(at)->prev, at); }

    /// Unlinks an element of this list without deleting it.
    void remove(T* e) noexcept
    {
        ListNode* node = e;
        (node->prev ? node->prev->next : m_head) = node->next;
        (node->next ? node->next->prev : m_tail) = node->prev;
        node->prev = node->next = nullptr;
        --m_count;
    }

    /// Unlinks the head and returns it; null on an empty list.
    T* takeHead() noexcept
    {
        T* e = head();
        if (e) remove(e);
        return e;
    }

    /// Forgets all elements without touching them; for an owner that has freed them in bulk.
    void forget() noexcept
    {
        m_head = m_tail = nullptr;
        m_count = 0;
    }

    /// The element of this index from the head; null outside 0 to count less 1. Linear.
    [[nodiscard]] T* at(std::size_t index) const noexcept
    {
        if (index >= m_count) return nullptr;
        ListNode* node = m_head;
        while (index-- > 0) node = node->next;
        return get(node);
    }

    /// The element itself when it stands in this list, else null. Linear.
    [[nodiscard]] T* find(const T* wanted) const noexcept
    {
        for (T* e = head(); e; e = next(e))
            if (e == wanted) return e;
        return nullptr;
    }

private:
    static const ListNode* links(const T* e) noexcept { return e; }
    static ListNode* links(T* e) noexcept { return e; }

    void link(ListNode* node, ListNode* before, ListNode* after) noexcept
    {
        node->prev = before;
        node->next = after;
        (before ? before->next : m_head) = node;
        (after ? after->prev : m_tail) = node;
        ++m_count;
    }

    ListNode* m_head = nullptr;
    ListNode* m_tail = nullptr;
    std::size_t m_count = 0;
};

} // namespace tessaro
