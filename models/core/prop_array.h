#pragma once

#include <cstdint>

#include "models/core/prop_value.h"

namespace ZQ_RMT_MODELS {

// A node of a doubly linked list of properties. There is no object for the list: any of its nodes stands for it. A new
// list is one node that counts as no entry. Operations take time in proportion to the length of the list, except for
// Append on the last node, which takes constant time.
class PropArray final {
 public:
  PropArray() = default;
  PropArray(const PropArray&) = delete;
  PropArray& operator=(const PropArray&) = delete;

  // Releases all nodes of the list that `node` is in. Does nothing for null.
  static void Destroy(PropArray* node);

  // The number of nodes, but -1 for a single node whose Name is "empty".
  std::int32_t Count() const;

  // The property at `position`, counted from 0; the list owns it. Null if there is none or `node` is null.
  static const PropValue* At(const PropArray* node, std::int32_t position);

  // Appends `added` to the list, or stores it in the initial node if that is all there is. Returns the node that holds
  // it.
  PropArray* Append(PropValue added);

  // Takes this node out of the list and releases it. Returns the first node of the list, null if no node remains.
  PropArray* Remove();

  // Makes the list `count` nodes long by appending default properties or releasing its last nodes. Returns a node of
  // it. For 0 the first node remains, as that of a new list. A negative `count` changes nothing.
  PropArray* Resize(std::int32_t count);

  // Overwrites a property that equals `key` with a copy of `replacement`: the first one of the list if it is equal,
  // else the last that is. Returns `replacement` in any case. Changes nothing if `key` is null.
  virtual const PropValue* Replace(const PropValue* key, const PropValue* replacement);

  const PropValue& Value() const { return value_; }
  std::int32_t Index() const { return index_; }  // from 0; -1 in the node of a new list
  bool IsLast() const { return last_; }          // whether this is the node that was appended last
  // Whether this node is a whole list, which counts -1.
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
