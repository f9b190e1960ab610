#include "models/devices/cpu_data.h"

#include "json/member_kinds.h"

namespace ZQ_RMT_MODELS {
namespace {

constexpr json::Field kCPUDataFields[] = {
    json::row<&CPUData::CoreCount>(u"CoreCount", {.id = 7801, .line = "Set CORE COUNT:"}),
    json::row<&CPUData::CoreSpeed>(u"CoreSpeed"),
    json::row<&CPUData::architecture>(u"architecture"),
    json::row<&CPUData::runType>(u"runType"),
    json::row<&CPUData::startingTemp>(u"startingTemp"),
    json::row<&CPUData::operationWeight>(u"operationWeight"),
    json::row<&CPUData::stressSeconds>(u"stressSeconds"),
    json::row<&CPUData::coolingSeconds>(u"coolingSeconds"),
    json::row<&CPUData::stressPercentages>(u"stressPercentages"),
    json::row<&CPUData::operationsDone>(u"operationsDone"),
    json::row<&CPUData::operationTemps>(u"operationTemps"),
    json::row<&CPUData::heatScore>(u"heatScore"),
    json::row<&CPUData::averageTemp>(u"averageTemp"),
};
constexpr json::RecordTable kCPUDataTable =
    json::Table({.name = "CPUData", .fields = kCPUDataFields, .completeId = 7802});

}  // namespace

const json::RecordTable& CPUData::Table() { return kCPUDataTable; }

}  // namespace ZQ_RMT_MODELS
