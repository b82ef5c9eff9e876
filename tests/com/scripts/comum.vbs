' Helpers shared by the component's VBScript tests: the harness puts them before each script (Wine's
' VBScript has no ExecuteGlobal). Each failed check prints one line and is counted; Termina prints
' the count and the line FIM, which only a script that ran to its end prints, and ends the script
' with the count as its exit code.

Dim falhas
falhas = 0
Dim fso
Set fso = CreateObject("Scripting.FileSystemObject")

Sub Falha(descricao)
  falhas = falhas + 1
  WScript.Echo "FALHA: " & descricao
End Sub

' Same type and same value.
Sub Confere(descricao, obtido, esperado)
  If TypeName(obtido) <> TypeName(esperado) Then
    Falha descricao & ": tipo " & TypeName(obtido) & ", esperado " & TypeName(esperado)
  ElseIf obtido <> esperado Then
    Falha descricao & ": [" & obtido & "], esperado [" & esperado & "]"
  End If
End Sub

' The error a statement raised, read right after it under On Error Resume Next; clears it.
Sub ConfereErro(descricao, numero, esperado)
  Confere descricao, CLng(numero), CLng(esperado)
  Err.Clear
End Sub

' A text file written as UTF-16, as the component's texts are.
Function CriaSaida(caminho)
  Set CriaSaida = fso.CreateTextFile(caminho, True, True)
End Function

Function LeTudo(caminho)
  LeTudo = fso.OpenTextFile(caminho, 1, False, -1).ReadAll
End Function

Sub Termina()
  WScript.Echo falhas & " falhas"
  WScript.Echo "FIM"
  WScript.Quit falhas
End Sub
