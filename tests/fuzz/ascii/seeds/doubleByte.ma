//Maya ASCII 7.0 scene
//Codeset: 932
createNode time -n "É\";
fileInfo "k" "É|\É\É";
setAttr ".z" -type "string" "±Å";