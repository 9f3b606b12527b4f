//Maya ASCII 2018 scene
//Codeset: UTF-8
createNode script -n "s";
	addAttr -ci true -k true -sn "wt" -ln "weight" -dv 0.5 -min 0 -max 1 -at "double";
	addAttr -ln "c" -at "float3" -nc 3; addAttr -ln "cr" -p "c" -at "float";
	setAttr ".b" -type "string" ( "a\"b" + "\n" + "c\\" );
	setAttr ".z1" -type "stringArray" 2 "a" "ü";
	setAttr ".z2" -type "Int32Array" 2 1 -2;
	setAttr ".z3" -type "doubleArray" 1 0.5;
	setAttr ".z4" -type "vectorArray" 1 1 2 3;
	setAttr ".z5" -type "pointArray" 1 1 2 3 1;
	setAttr ".z6" -type "matrix" 1 0 0 0 0 1 0 0 0 0 1 0 0 0 0 1;
	setAttr ".z7" -type "matrix" "xform" 1 1 1 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 1 0 0 0 1 1 1 1 yes;
	setAttr ".z8" -type "componentList" 2 "f[0:5]" "vtx[*]";
	setAttr ".aal" -type "attributeAlias" {"a","b","c","d"} ;
	setAttr ".z9" -type "nurbsCurve" 3 1 0 no 3 6 0 0 0 1 1 1 4 0 0 0 1 0 0 2 0 0 3 0 0;
	setAttr ".y1" -type "nurbsSurface" 1 1 0 0 no 2 0 1 2 0 1 "NOTRIM" 4 0 0 0 0 1 0 1 0 0 1 1 0;
	setAttr ".y2" -type "nurbsTrimface" no 1 0 1 0 1 1 1 0 no 3 2 0 1 2 0 0 0 1 0 0 0.01 0 -1 1 1 1 0 no 2 2 0 1 2 0 0 1 0 1 0.02;
	setAttr ".y3" -type "lattice" 2 1 1 2 0 0 0 1 0 0;
	setAttr ".y4" -type "dataReferenceEdits" "N" "" 0 "M" 1 2 "a" "b" " -k 1";
	setAttr ".y5" -type "subd" 20 0 1 2;
	setAttr ".y6[0:1]" 1 2 3 4;
	setAttr ".y7" what "x;y";
createNode skinCluster -n "k";
	setAttr -s 2 ".wl[0:1].w"
		2 0 0.857 1 0.143
		1 4 1;
	setAttr -s 3 ".wl[2].w[0:2]" 0.6 0.3 0.1;
createNode animCurveTL -n "c";
	setAttr -s 2 ".ktv[0:1]"  1 0 10 5.5;
<<<<<<< HEAD
select -ne :time1;
	setAttr ".o" 0x1F;
file -rdi 1 -ns "N" -rfn "NRN" -op "v=0;" -typ "mayaAscii" "a.ma";
relationship "link" ":lightLinker1" "a.msg" "b.msg";
disconnectAttr "a.b" "c.d"; lockNode -l 1 ; /* end */ unknownWord { ( ;
