//Maya ASCII 2026 scene
createNode transform -s -n "persp";
	setAttr ".v" no;
	setAttr ".t" 1 2