
' Added to the module of the macro for one call of it; the document is never saved.
Sub LabelCall@NUMBER@()
	Dim sResult
	On Error GoTo LabelFailed@NUMBER@
	Call @MACRO@(@ARGUMENTS@)
	LabelResult@NUMBER@("done")
	Exit Sub
LabelFailed@NUMBER@:
	sResult = "failed" & Chr(10) & Err & Chr(10) & Error$
	LabelResult@NUMBER@(sResult)
End Sub

Sub LabelResult@NUMBER@(sResult)
	Dim oFile, oText
	oFile = createUnoService("com.sun.star.ucb.SimpleFileAccess").openFileReadWrite("@FOLDER@/result")
	oText = createUnoService("com.sun.star.io.TextOutputStream")
	oText.setOutputStream(oFile.getOutputStream())
	oText.setEncoding("UTF-8")
	oText.writeString(sResult)
	oText.closeOutput()
End Sub
