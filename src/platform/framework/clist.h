#pragma once

#include "platform/framework/position.h"
#include "platform/system/types.h"

/// A list. TYPE is the type of its elements, ARG_TYPE the type of the arguments that become elements. Not provided:
/// removal of single elements, search, insertion in the middle.
template <class TYPE, class ARG_TYPE = const TYPE&>
class CList {
  public:
    /// @param blockSize  ignored: each element is allocated separately.
    explicit CList([[maybe_unused]] int blockSize = 10) {}
    ~CList() { RemoveAll(); }

    CList(const CList&) = delete;
    CList& operator=(const CList&) = delete;

    POSITION AddTail(ARG_TYPE element) {
        Node* const node = new Node{nullptr, element};
        (m_tail != nullptr ? m_tail->next : m_head) = node;
        m_tail = node;
        ++m_count;
        return ToPosition(node);
    }

    POSITION AddHead(ARG_TYPE element) {
        m_head = new Node{m_head, element};
        if (m_tail == nullptr) m_tail = m_head;
        ++m_count;
        return ToPosition(m_head);
    }

    int GetCount() const noexcept { return m_count; }
    BOOL IsEmpty() const noexcept { return m_count == 0; }

    void RemoveAll() noexcept {
        while (m_head != nullptr) {
            Node* const next = m_head->next;
            delete m_head;
            m_head = next;
        }
        m_tail = nullptr;
        m_count = 0;
    }

    POSITION GetHeadPosition() const noexcept { return ToPosition(m_head); }

    /// The element at `position`, which is advanced to the next.
    /// @param position  not null.
    const TYPE& GetNext(POSITION& position) const noexcept {
        const Node* const node = reinterpret_cast<const Node*>(position);
        position = ToPosition(node->next);
        return node->element;
    }

  private:
    struct Node {
        Node* next;
        TYPE element;
    };
    static POSITION ToPosition(Node* node) noexcept { return reinterpret_cast<POSITION>(node); }

    Node* m_head = nullptr;
    Node* m_tail = nullptr;
    int m_count = 0;
};
