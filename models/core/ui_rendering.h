#pragma once

#include <memory>
#include <string>
#include <vector>

#include "json/record.h"

namespace ZQ_RMT_MODELS {

// The language in which to speak to the user.
class LanguageInfo : public json::Record<LanguageInfo> {
 public:
  std::u16string Direction;
  std::u16string CultureInfo;  // read only if Direction is there, of whatever kind

  static const json::RecordTable& Table();
};

// One parameter of a request to the user.
class UIParameters : public json::Record<UIParameters> {
 public:
  std::u16string Label;
  std::u16string Type;
  std::u16string ActionName;
  std::vector<std::u16string> DataValues;

  static const json::RecordTable& Table();
};

// What a task asks its host to show to the user.
class UIRendering : public json::Record<UIRendering> {
 public:
  std::u16string CategoryType;
  std::u16string CategoryOrder;
  std::u16string Request;
  std::u16string Requestor;
  std::u16string Recipient;
  std::u16string Message;
  std::u16string MessageID;
  std::u16string MessageLabel;
  std::vector<UIParameters> Parameters;
  std::unique_ptr<ZQ_RMT_MODELS::LanguageInfo> LanguageInfo;

  static const json::RecordTable& Table();
};

}  // namespace ZQ_RMT_MODELS
