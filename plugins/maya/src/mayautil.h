// What the driver reads of the scene as a whole and of single nodes: axis, unit, names, matrices.
#pragma once

#include "sceneapi/orvSceneValues.h"

#include <maya/MDagPath.h>
#include <maya/MMatrix.h>
#include <maya/MObject.h>
#include <maya/MStatus.h>
#include <maya/MString.h>

#include <string>

/// The renderer's code of the scene's up axis: 0 +X, 1 +Y, 2 +Z, 3 -X, 4 -Y, 5 -Z; -1, with a
/// warning, for any other vector.
int getUpAxis();

/// Working units of the scene per metre (100 for centimetres); 100 when the unit cannot be asked
/// for, 0 for a unit without a name in the table. Coordinates are centimetres whatever it says.
float getMeterScale();

/// The output path of a scene path: environment variables and a leading tilde expanded, ".mb" taken
/// off, ".obx" put on where it is not there yet. "car.ma" becomes "car.ma.obx".
MString expandScenePath(const MString& path);

/// The local matrix of a transform node. Fails, and leaves `matrix` alone, for any other node.
MStatus getTransformation(const MObject& node, orv::Matrix4& matrix);

/// The local matrix of a transform node; quietly the identity for any other node.
orv::Matrix4 getMatrix(const MObject& node);

/// Rows as they are, fourth column (0, 0, 0, 1): projective terms are dropped.
orv::Matrix4 convertMatrix(const MMatrix& matrix);

/// The node's name in UTF-8; "unknown object" for a node outside the DAG.
std::string nodeName(const MObject& node);

/// True for meshes and NURBS surfaces.
bool isSupportedGeometry(const MDagPath& path);

/// Chordal tolerance of a quality from 0 to 1: (1 - q)^4 * 0.001 + 0.0001, in single precision.
float toleranceFromQuality(float quality);
