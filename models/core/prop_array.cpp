#include "models/core/prop_array.h"

#include <utility>

namespace ZQ_RMT_MODELS {

void PropArray::Destroy(PropArray* node) {
  if (node == nullptr) return;
  for (PropArray* current = Head(node); current != nullptr;) delete std::exchange(current, current->next_);
}

std::int32_t PropArray::Count() const {
  if (IsEmptyList()) return -1;
  std::int32_t count = 0;
  for (const PropArray* node = Head(this); node != nullptr; node = node->next_) ++count;
  return count;
}

const PropValue* PropArray::At(const PropArray* node, std::int32_t position) {
  if (node == nullptr) return nullptr;
  for (node = Head(node); node != nullptr; node = node->next_) {
    if (node->index_ == position) return &node->value_;
  }
  return nullptr;
}

PropArray* PropArray::Append(PropValue added) {
  PropArray* node = Tail(this);
  if (node->index_ != -1) {
    auto* const behind = new PropArray;
    behind->previous_ = node;
    behind->index_ = node->index_;
    node->next_ = behind;
    node->last_ = false;
    node = behind;
  }
  node->value_ = std::move(added);
  node->last_ = true;
  // A new node begins with the number of the one before it.
  ++node->index_;
  return node;
}

PropArray* PropArray::Remove() {
  if (last_ && previous_ != nullptr) previous_->last_ = true;
  if (previous_ != nullptr) previous_->next_ = next_;
  if (next_ != nullptr) next_->previous_ = previous_;
  PropArray* const neighbour = previous_ != nullptr ? previous_ : next_;
  delete this;
  if (neighbour == nullptr) return nullptr;
  PropArray* const head = Head(neighbour);
  std::int32_t position = 0;
  for (PropArray* node = head; node != nullptr; node = node->next_) node->index_ = position++;
  return head;
}

PropArray* PropArray::Resize(std::int32_t count) {
  if (count < 0) return this;
  PropArray* tail = Tail(this);
  while (tail->index_ + 1 < count) tail = tail->Append(PropValue{});
  while (tail->index_ + 1 > count && tail->previous_ != nullptr) {
    PropArray* const before = tail->previous_;
    before->next_ = nullptr;
    before->last_ = true;
    delete std::exchange(tail, before);
  }
  if (count == 0) {
    tail->value_ = PropValue{};
    tail->index_ = -1;
  }
  return tail;
}

const PropValue* PropArray::Replace(const PropValue* key, const PropValue* replacement) {
  if (key == nullptr) return replacement;
  PropArray* const head = Head(this);
  PropArray* match = CompareValue(head->value_, *key) == 0 ? head : nullptr;
  if (match == nullptr) {
    for (PropArray* node = head->next_; node != nullptr; node = node->next_) {
      if (CompareValue(node->value_, *key) == 0) match = node;
    }
  }
  if (match != nullptr) match->value_ = *replacement;
  return replacement;
}

}  // namespace ZQ_RMT_MODELS
