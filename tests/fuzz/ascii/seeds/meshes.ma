//Maya ASCII 2018 scene
//Codeset: 1252
requires maya "2018";
requires -nodeType "x" -dataType "d" "plug" "1.0";
currentUnit -l meter -a degree -t pal;
fileInfo "application" "maya";
createNode transform -n "a";
	rename -uid "1234";
	setAttr ".t" -type "double3" 1 -2.5 3e-05 ;
createNode mesh -n "aShape" -p "a";
	setAttr -k off ".v";
	setAttr ".uvst[0].uvsn" -type "string" "map1";
	setAttr -s 4 ".uvst[0].uvsp[0:3]" -type "float2" 0 0 1 0 1 1 0 1;
	setAttr ".pt[0:1]" -type "float3" 0.5 0 0 nan -1.#IND inf;
	setAttr -s 4 ".vt[0:3]"  -0.5 0 0.5 0.5 0 0.5 0.5 0 -0.5
		-0.5 0 -0.5;
	setAttr -s 4 ".ed[0:3]"  0 1 0 1 2 1 2 3 0 3 0 1;
	setAttr -s 2 ".n[0:1]" -type "float3"  1e+20 1e+20 1e+20 0 1 0;
	setAttr -ch 4 ".fc[0:1]" -type "polyFaces"
		f 4 0 1 2 3 h 3 -1 -2 -3
		mu 0 7 0 1 2 3 0 1 2 mc 0 4 -1 0 1 2
		f 3 0 1 2 mf 3 0 1 2 mh 0 fc 1 2;
	setAttr ".cd" -type "dataPolyComponent" Index_Data Edge 1 2 1.5;
	setAttr ".hfd" -type "dataPolyComponent" Index_Data Face 0;
	setAttr ".zz" -type "mesh" "v" 3 0 0 0 1 0 0 0 1 0 "vt" 1 0 0 "e" 3 0 1 "hard" 1 2 "smooth" 2 0 "hard" "face" "l" 3 0 1 2 "lt" 1 0 "l" 3 -1 -2 -3;
	setAttr ".yy" -type "mesh" "verts" 3 0 0 0 1 0 0 0 1 0 "edges" 3 0 1 1 1 2 0 2 0 1 "faces" 1 3 0 1 2 "uvMaps" 1 0 "mi" "map1" "uv" 1 0 0;
parent -s -nc -r -add "|a|aShape" "b";
connectAttr "aShape.iog" ":initialShadingGroup.dsm" -na;
// End of meshes.ma
