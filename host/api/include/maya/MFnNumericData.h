// Two or three numbers that travel as one value.
#pragma once

#include <maya/MFnBase.h>

#include <cstddef>

class MFnNumericData : public MFnBase {
public:
    enum Type {
        kInvalid = 0,
        kBoolean = 1,
        kByte = 2,
        kChar = 3,
        kShort = 4,
        k2Short = 5,
        k3Short = 6,
        kInt = 7,
        kLong = 7,
        k2Int = 8,
        k2Long = 8,
        k3Int = 9,
        k3Long = 9,
        kInt64 = 10,
        kFloat = 11,
        k2Float = 12,
        k3Float = 13,
        kDouble = 14,
        k2Double = 15,
        k3Double = 16,
        k4Double = 17
    };

    MFnNumericData() = default;
    explicit MFnNumericData(const MObject& object, MStatus* ReturnStatus = nullptr);

    MFn::Type type() const override;

    Type numericType(MStatus* ReturnStatus = nullptr) const;
    /// Fail, leaving the receivers as they were, when the data holds another number of numbers or
    /// another type.
    MStatus getData(short& first, short& second) const;
    MStatus getData(int& first, int& second) const;
    MStatus getData(float& first, float& second) const;
    MStatus getData(double& first, double& second) const;
    MStatus getData(short& first, short& second, short& third) const;
    MStatus getData(int& first, int& second, int& third) const;
    MStatus getData(float& first, float& second, float& third) const;
    MStatus getData(double& first, double& second, double& third) const;
    MStatus getData2Float(float& first, float& second) const { return getData(first, second); }
    MStatus getData3Float(float& first, float& second, float& third) const
    {
        return getData(first, second, third);
    }
    MStatus getData2Double(double& first, double& second) const { return getData(first, second); }
    MStatus getData3Double(double& first, double& second, double& third) const
    {
        return getData(first, second, third);
    }

private:
    template<class T, std::size_t count>
    MStatus copyTo(Type wanted, T* const (&receivers)[count]) const;
};
