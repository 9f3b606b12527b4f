#include <maya/MFnNumericData.h>

#include "host/api/src/Inside.h"
#include "host/api/src/toStatus.h"

using host::ErrorCode;
using host::api::answer;
using host::api::Inside;
using host::api::NumericRecord;
using host::api::toStatus;

MFnNumericData::MFnNumericData(const MObject& object, MStatus* ReturnStatus)
{
    answer(ReturnStatus, MFnNumericData::setObject(object));
}

MFn::Type MFnNumericData::type() const
{
    return MFn::kNumericData;
}

MFnNumericData::Type MFnNumericData::numericType(MStatus* ReturnStatus) const
{
    const NumericRecord* record = Inside::numbersOf(object(ReturnStatus));
    return record != nullptr ? record->type : kInvalid;
}

template<class T, std::size_t count>
MStatus MFnNumericData::copyTo(Type wanted, T* const (&receivers)[count]) const
{
    const NumericRecord* record = Inside::numbersOf(m_object);
    if (record == nullptr) {
        return toStatus(ErrorCode::NotFound);
    }
    if (record->type != wanted || record->count != count) {
        return toStatus(ErrorCode::InvalidParameter);
    }
    for (std::size_t i = 0; i < count; ++i) {
        *receivers[i] = static_cast<T>(record->numbers[i]);
    }
    return MStatus();
}

MStatus MFnNumericData::getData(short& first, short& second) const
{
    return copyTo<short, 2>(k2Short, {&first, &second});
}

MStatus MFnNumericData::getData(int& first, int& second) const
{
    return copyTo<int, 2>(k2Int, {&first, &second});
}

MStatus MFnNumericData::getData(float& first, float& second) const
{
    return copyTo<float, 2>(k2Float, {&first, &second});
}

MStatus MFnNumericData::getData(double& first, double& second) const
{
    return copyTo<double, 2>(k2Double, {&first, &second});
}

MStatus MFnNumericData::getData(short& first, short& second, short& third) const
{
    return copyTo<short, 3>(k3Short, {&first, &second, &third});
}

MStatus MFnNumericData::getData(int& first, int& second, int& third) const
{
    return copyTo<int, 3>(k3Int, {&first, &second, &third});
}

MStatus MFnNumericData::getData(float& first, float& second, float& third) const
{
    return copyTo<float, 3>(k3Float, {&first, &second, &third});
}

MStatus MFnNumericData::getData(double& first, double& second, double& third) const
{
    return copyTo<double, 3>(k3Double, {&first, &second, &third});
}
