//Maya ASCII 2018 scene
//Name: music_box.ma
//Codeset: 1252
requires maya "2018";
currentUnit -l centimeter -a degree -t pal;
fileInfo "application" "maya";
createNode transform -n "shot";
	setAttr ".t" -type "double3" 0 12 26 ;
	setAttr ".r" -type "double3" -20 0 0 ;
createNode camera -n "shotShape" -p "shot";
	setAttr -k off ".v";
	setAttr ".rnd" yes;
	setAttr ".fl" 40;
	setAttr ".coi" 28;
createNode transform -n "box";
	setAttr ".s" -type "double3" 1 1 1 ;
createNode transform -n "lid" -p "box";
	setAttr ".t" -type "double3" 0 2 0 ;
createNode nurbsSurface -n "lidShape" -p "lid";
	setAttr -k off ".v";
	setAttr ".cc" -type "nurbsSurface"
		1 1 0 0 no
		2 0 1
		2 0 1
		
		4
		-4 0 4
		-4 0 -4
		4 0 4
		4 0 -4
		;
	setAttr ".tf[0]" -type "nurbsTrimface"
		no 2
		0 4 0 0 0 0
		1
		1 1 0 no 3
		2 0 1
		2 -4 0 4 4 0 4
		0.001 0 -1
		1
		1 1 0 no 2
		2 0 1
		2 0 0 1 0
		1 0.001
		1
		1 1 0 no 3
		2 1 2
		2 4 0 4 4 0 -4
		0.001 0 -1
		1
		1 1 0 no 2
		2 1 2
		2 1 0 1 1
		1 0.001
		1
		1 1 0 no 3
		2 2 3
		2 4 0 -4 -4 0 -4
		0.001 0 -1
		1
		1 1 0 no 2
		2 2 3
		2 1 1 0 1
		1 0.001
		1
		1 1 0 no 3
		2 3 4
		2 -4 0 -4 -4 0 4
		0.001 0 -1
		1
		1 1 0 no 2
		2 3 4
		2 0 1 0 0
		1 0.001
		1 4 0 0 0 0
		1
		2 1 0 yes 3
		4 0 0 1 1
		3 2 0 0 1 2 0 2 0.7071067812 0 0 2 1
		0.001 0 -1
		1
		2 1 0 yes 2
		4 0 0 1 1
		3 0.75 0.5 1 0.75 0.25 0.7071067812 0.5 0.25 1
		1 0.001
		1
		2 1 0 yes 3
		4 1 1 2 2
		3 0 0 2 1 -2 0 2 0.7071067812 -2 0 4.440892099e-16 1
		0.001 0 -1
		1
		2 1 0 yes 2
		4 1 1 2 2
		3 0.5 0.25 1 0.25 0.25 0.7071067812 0.25 0.5 1
		1 0.001
		1
		2 1 0 yes 3
		4 2 2 3 3
		3 -2 0 4.440892099e-16 1 -2 0 -2 0.7071067812 -4.440892099e-16 0 -2 1
		0.001 0 -1
		1
		2 1 0 yes 2
		4 2 2 3 3
		3 0.25 0.5 1 0.25 0.75 0.7071067812 0.5 0.75 1
		1 0.001
		1
		2 1 0 yes 3
		4 3 3 4 4
		3 -4.440892099e-16 0 -2 1 2 0 -2 0.7071067812 2 0 -8.881784197e-16 1
		0.001 0 -1
		1
		2 1 0 yes 2
		4 3 3 4 4
		3 0.5 0.75 1 0.75 0.75 0.7071067812 0.75 0.5 1
		1 0.001;
createNode transform -n "profile";
	setAttr ".v" no;
createNode nurbsCurve -n "profileShape" -p "profile";
	setAttr -k off ".v";
	setAttr ".cc" -type "nurbsCurve"
		3 1 0 no 3
		6 0 0 0 1 1 1
		4
		0.5 0 0
		2.5 0.5 0
		0.25 2 0
		1.25 3 0
		;
createNode transform -n "vase";
	setAttr ".t" -type "double3" -8 0 0 ;
createNode nurbsSurface -n "vaseShape" -p "vase";
	setAttr -k off ".v";
	setAttr ".dvu" 0;
	setAttr ".dvv" 0;
	setAttr ".cpr" 4;
	setAttr ".cps" 4;
createNode transform -n "ball";
	setAttr ".t" -type "double3" 8 1 0 ;
createNode nurbsSurface -n "ballShape" -p "ball";
	setAttr -k off ".v";
createNode transform -n "figures";
	setAttr ".t" -type "double3" 0 3 0 ;
createNode transform -n "left" -p "figures";
	setAttr ".t" -type "double3" -2 0 0 ;
	setAttr ".s" -type "double3" 0.5 0.5 0.5 ;
createNode mesh -n "leftShape" -p "left";
	setAttr -k off ".v";
	setAttr ".uvst[0].uvsn" -type "string" "map1";
	setAttr ".cuvs" -type "string" "map1";
	setAttr -s 8 ".vt[0:7]"  -1 -1 1 1 -1 1 -1 1 1 1 1 1 -1 1 -1 1 1 -1 -1 -1 -1 1 -1 -1;
	setAttr -s 12 ".ed[0:11]"  0 1 0 2 3 0 4 5 0 6 7 0 0 2 0 1 3 0 2 4 0 3 5 0 4 6 0 5 7 0 6 0 0 7 1 0;
	setAttr -s 6 -ch 24 ".fc[0:5]" -type "polyFaces"
		f 4 0 5 -2 -5
		f 4 1 7 -3 -7
		f 4 2 9 -4 -9
		f 4 3 11 -1 -11
		f 4 -12 -10 -8 -6
		f 4 10 4 6 8;
createNode transform -n "right" -p "figures";
	setAttr ".t" -type "double3" 2 0 0 ;
	setAttr ".s" -type "double3" 0.5 0.5 0.5 ;
createNode mesh -n "rightShape" -p "right";
	setAttr -k off ".v";
	setAttr ".uvst[0].uvsn" -type "string" "map1";
	setAttr ".cuvs" -type "string" "map1";
	setAttr -s 8 ".vt[0:7]"  -1 -1 1 1 -1 1 -1 1 1 1 1 1 -1 1 -1 1 1 -1 -1 -1 -1 1 -1 -1;
	setAttr -s 12 ".ed[0:11]"  0 1 0 2 3 0 4 5 0 6 7 0 0 2 0 1 3 0 2 4 0 3 5 0 4 6 0 5 7 0 6 0 0 7 1 0;
	setAttr -s 6 -ch 24 ".fc[0:5]" -type "polyFaces"
		f 4 0 5 -2 -5
		f 4 1 7 -3 -7
		f 4 2 9 -4 -9
		f 4 3 11 -1 -11
		f 4 -12 -10 -8 -6
		f 4 10 4 6 8;
createNode transform -n "follicle";
createNode follicle -n "follicleShape" -p "follicle";
	setAttr -k off ".v";
	setAttr ".pu" 0.1;
	setAttr ".pv" 0.1;
	setAttr ".sdn" 4;
createNode transform -n "strandCurve";
	setAttr ".t" -type "double3" -3 2 3 ;
createNode nurbsCurve -n "strandCurveShape" -p "strandCurve";
	setAttr -k off ".v";
	setAttr ".cc" -type "nurbsCurve"
		1 3 0 no 3
		4 0 1 2 3
		4
		0 0 0
		0 1 0
		0.5 2 0
		1.5 2.5 0
		;
createNode transform -n "tuft";
createNode pfxHair -n "tuftShape" -p "tuft";
	setAttr -k off ".v";
	setAttr ".dpc" 100;
	setAttr ".dam" no;
createNode transform -n "hair";
createNode hairSystem -n "hairShape" -p "hair";
	setAttr -k off ".v";
	setAttr ".hpc" 3;
	setAttr ".cwd" 0.4;
	setAttr ".hwd" 0.05;
	setAttr ".hcl" -type "float3" 0.8 0.4 0.1 ;
	setAttr -s 2 ".cws[0:1]"  0 1 1 1 0.25 1;
	setAttr -s 2 ".hws[0:1]"  0 1 1 1 0.25 1;
createNode displayLayerManager -n "layerManager";
	setAttr ".cdl" 1;
	setAttr -s 4 ".dli[1:3]"  1 2 3;
	setAttr -s 4 ".dli";
createNode displayLayer -n "defaultLayer";
createNode displayLayer -n "dancers";
	setAttr ".do" 1;
createNode displayLayer -n "furniture";
	setAttr ".do" 2;
createNode displayLayer -n "tools";
	setAttr ".do" 3;
	setAttr ".v" no;
createNode makeNurbSphere -n "makeBall";
	setAttr ".ax" -type "double3" 0 1 0 ;
	setAttr ".r" 1.5;
createNode revolve -n "turnVase";
	setAttr ".ax" -type "double3" 0 1 0 ;
	setAttr ".s" 8;
createNode animCurveTA -n "figures_rotateY";
	setAttr ".tan" 2;
	setAttr ".wgt" no;
	setAttr -s 2 ".ktv[0:1]"  1 0 25 360;
	setAttr ".pst" 3;
createNode animCurveTL -n "left_translateY";
	setAttr ".tan" 18;
	setAttr ".wgt" no;
	setAttr -s 3 ".ktv[0:2]"  1 0 7 1.5 13 0;
	setAttr ".pre" 3;
	setAttr ".pst" 3;
createNode animCurveTL -n "left_translateX";
	setAttr ".tan" 9;
	setAttr ".wgt" no;
	setAttr -s 3 ".ktv[0:2]"  1 -2 13 -2.5 25 -2;
createNode animCurveTU -n "right_visibility";
	setAttr ".tan" 9;
	setAttr ".wgt" no;
	setAttr -s 3 ".ktv[0:2]"  1 1 13 0 19 1;
	setAttr -s 3 ".kot[0:2]"  5 5 5;
createNode animCurveTL -n "shot_translateX";
	setAttr ".tan" 1;
	setAttr ".wgt" no;
	setAttr -s 2 ".ktv[0:1]"  1 -6 25 6;
	setAttr -s 2 ".kit[0:1]"  1 1;
	setAttr -s 2 ".kot[0:1]"  1 1;
	setAttr -s 2 ".kix[0:1]"  1 0.4;
	setAttr -s 2 ".kiy[0:1]"  0 0.9165151;
	setAttr -s 2 ".kox[0:1]"  0.6 1;
	setAttr -s 2 ".koy[0:1]"  0.8 0;
createNode animCurveTU -n "shot_focalLength";
	setAttr ".tan" 10;
	setAttr ".wgt" no;
	setAttr -s 2 ".ktv[0:1]"  1 40 25 55;
createNode animCurveUL -n "right_translateY";
	setAttr ".tan" 2;
	setAttr ".wgt" no;
	setAttr -s 2 ".ktv[0:1]"  0 0 360 2;
createNode unitConversion -n "toDegrees";
	setAttr ".cf" 57.295779513082323;
createNode multiplyDivide -n "half";
	setAttr ".i2" -type "float3" 0.5 0.5 0.5 ;
createNode script -n "sceneConfigurationScriptNode";
	setAttr ".b" -type "string" "playbackOptions -min 1 -max 25 -ast 1 -aet 50 ";
	setAttr ".st" 6;
select -ne :time1;
	setAttr ".o" 4;
	setAttr ".unw" 4;
connectAttr "figures_rotateY.o" "figures.ry";
connectAttr "left_translateY.o" "left.ty";
connectAttr "left_translateX.o" "left.tx";
connectAttr "right_visibility.o" "right.v";
connectAttr "shot_translateX.o" "shot.tx";
connectAttr "shot_focalLength.o" "shotShape.fl";
connectAttr "figures.ry" "toDegrees.i";
connectAttr "toDegrees.o" "right_translateY.i";
connectAttr "right_translateY.o" "right.ty";
connectAttr "left.t" "half.i1";
connectAttr "half.o" "box.rp";
connectAttr "makeBall.os" "ballShape.cr";
connectAttr "profileShape.ws" "turnVase.ic";
connectAttr "turnVase.os" "vaseShape.cr";
connectAttr "layerManager.dli[0]" "defaultLayer.id";
connectAttr "layerManager.dli[1]" "dancers.id";
connectAttr "layerManager.dli[2]" "furniture.id";
connectAttr "layerManager.dli[3]" "tools.id";
connectAttr "dancers.di" "left.do";
connectAttr "dancers.di" "right.do";
connectAttr "furniture.di" "lid.do";
connectAttr "furniture.di" "vase.do";
connectAttr "furniture.di" "ballShape.do";
connectAttr "tools.di" "profile.do";
connectAttr "tools.di" "strandCurve.do";
connectAttr "strandCurveShape.l" "follicleShape.sp";
connectAttr "strandCurve.wm" "follicleShape.spm";
connectAttr "lidShape.ws" "follicleShape.is";
connectAttr "lid.wm" "follicleShape.iwm";
connectAttr "follicleShape.ot" "follicle.t";
connectAttr "follicleShape.or" "follicle.r";
connectAttr "follicleShape.oha" "hairShape.ih[0]";
connectAttr "hairShape.oh[0]" "follicleShape.crp";
connectAttr "hairShape.orh" "tuftShape.rhs";
connectAttr "lidShape.iog" ":initialShadingGroup.dsm" -na;
connectAttr "vaseShape.iog" ":initialShadingGroup.dsm" -na;
connectAttr "ballShape.iog" ":initialShadingGroup.dsm" -na;
connectAttr "leftShape.iog" ":initialShadingGroup.dsm" -na;
connectAttr "rightShape.iog" ":initialShadingGroup.dsm" -na;
// End of music_box.ma
