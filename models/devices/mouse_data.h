#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "json/record.h"

namespace ZQ_RMT_MODELS {

// A rectangle on the screen, with its size and not its far corner. A number without a fraction, 5 and not 5.0, isn't
// read.
class BoundingRectangle {
 public:
  double Left = 0.0;
  double Top = 0.0;
  double Width = 0.0;
  double Height = 0.0;

  void Deserialize(const json::Value* value);
  json::Serialized Serialize(json::Document* inComingDoc) const;
  static const json::RecordTable& Table();
};

// How often a button was pressed. The button has a number for a name.
class ButtonClickInfo : public json::Record<ButtonClickInfo> {
 public:
  std::int32_t ButtonPressedCount = 0;
  std::int32_t ButtonName = -1;

  static const json::RecordTable& Table();
};

// One motion from a source to a target. Unlike other nested records, both rectangles exist from the beginning.
class MouseMotionData : public json::Record<MouseMotionData> {
 public:
  std::int32_t MotionController = -1;
  std::u16string SourceName;
  std::u16string SourceID;
  std::u16string SourceType;
  std::u16string TargetName;
  std::u16string TargetID;
  std::u16string TargetType;
  std::unique_ptr<BoundingRectangle> SourceBoundingRect = std::make_unique<BoundingRectangle>();
  std::unique_ptr<BoundingRectangle> TargetBoundingRect = std::make_unique<BoundingRectangle>();

  static const json::RecordTable& Table();
};

// A pointing device and what was done with it. -1 stands for not set.
class MouseData : public json::Record<MouseData> {
 public:
  std::int32_t NumberOfButtons = 0;
  std::int32_t PointingType = 3;
  std::int32_t ActionTaken = -1;
  std::int32_t CommandExecuted = -1;
  std::int32_t EventRaised = -1;
  std::vector<std::int32_t> ContainedButtons;  // 0 for an element that is no integer of 32 bits
  std::vector<std::unique_ptr<MouseMotionData>> ExpectedMotions;
  std::vector<std::unique_ptr<MouseMotionData>> ActualMotions;
  std::vector<std::unique_ptr<ButtonClickInfo>> ButtonClickCount;
  std::vector<std::int32_t> ScrollResults;  // the same

  static const json::RecordTable& Table();
};

}  // namespace ZQ_RMT_MODELS
