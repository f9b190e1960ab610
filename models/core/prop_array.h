#pragma once

#include <cstdint>

#include "models/core/prop_value.h"

namespace ZQ_RMT_MODELS {

// A node of a doubly linked list of properties. The nodes are the list's only form: it is handled through any of them,
// and each operation but Append from the tail, which is constant, takes a number of steps in proportion to the list's
// length. A new list is one node that counts as no entry.
class PropArray final {
 public:
  PropArray() = default;
  PropArray(const PropArray&) = delete;
  PropArray& operator=(const PropArray&) = delete;

  // Releases all nodes of the list that `node` is in; null is a list of none.
  static void Destroy(PropArray* node);

  // The number of nodes; -1 for a lone node whose Name is "empty".
  std::int32_t Count() const;

  // The property at a position from 0, owned by the list; null when there is none. A null `node` is a list of none.
  static const PropValue* At(const PropArray* node, std::int32_t position);

  // Puts `added` behind the list's end, in the place of the initial node where that is all there is. Returns
  // the node that holds it.
  PropArray* Append(PropValue added);

  // Takes this node out of the list and releases it. Returns the list's head, null when no node remains.
  PropArray* Remove();

  // Makes the list `count` nodes long, with default properties or by removing nodes from its end, and returns a node of
  // it. The last node that remains is never removed: it is reset to a new list's. A negative `count` changes nothing.
  PropArray* Resize(std::int32_t count);

  // Puts a copy of `replacement` in the place of the property that equals `key`: the head's, or else the last such
  // one's. Returns `replacement`. Nothing is replaced when `key` is null.
  virtual const PropValue* Replace(const PropValue* key, const PropValue* replacement);

  const PropValue& Value() const { return value_; }
  std::int32_t Index() const { return index_; }  // from 0; -1 in an initial node
  bool IsLast() const { return last_; }          // whether this is the node appended last
  // Whether this node is a whole list that counts -1.
  bool IsEmptyList() const { return previous_ == nullptr && next_ == nullptr && value_.Name == u"empty"; }

 private:
  template <class Node>
  static Node* Head(Node* node) {
    while (node->previous_ != nullptr) node = node->previous_;
    return node;
  }
  static PropArray* Tail(PropArray* node) {
    while (node->next_ != nullptr) node = node->next_;
    return node;
  }

  PropValue value_;
  bool last_ = true;
  PropArray* previous_ = nullptr;
  PropArray* next_ = nullptr;
  std::int32_t index_ = -1;
};

}  // namespace ZQ_RMT_MODELS
