' Validacao: how hosts call Valida_Dados and Gravar_Erro. Arguments: the clean invoice file, the
' faulty one, and a working folder (its name has accents, as real folders do).
Dim v, limpo, defeitos, trabalho, advertencias, n, s, linha
Set v = CreateObject("QuorvValida.Validacao")
limpo = WScript.Arguments(0)
defeitos = WScript.Arguments(1)
trabalho = WScript.Arguments(2)
advertencias = trabalho & "\ADVERTENCIAS.TXT"

' Every optional argument left out: keys 0, no origin, no server, separator "#".
n = Empty
s = v.Valida_Dados(limpo, n, trabalho)
Confere "arquivo limpo", s, 0
Confere "numero da remessa devolvido", TypeName(n), "String"
Confere "numero da remessa com 6 caracteres", Len(n), CLng(6)
Confere "arquivo limpo nao deixa advertencias", fso.FileExists(advertencias), False

n = 5
s = v.Valida_Dados(defeitos, n, trabalho)
Confere "arquivo com defeitos", s, 1
Confere "numero substitui o valor anterior", TypeName(n), "String"
Confere "advertencias escritas", fso.FileExists(advertencias), True
Confere "separador padrao", InStr(fso.OpenTextFile(advertencias).ReadLine, "#0#0#") > 0, True

' A run that cannot start answers 9 and leaves the caller's variable alone.
n = 42
s = v.Valida_Dados(limpo & ".nao-existe", n, trabalho)
Confere "arquivo ausente", s, 9
Confere "numero intocado", n, 42
s = v.Valida_Dados(limpo, n, trabalho & "\nao-existe")
Confere "diretorio ausente", s, 9

' Keys and texts given as automation converts them; the same object runs file after file.
n = ""
s = v.Valida_Dados(defeitos, n, trabalho, "123", 7.5, "", "", ";")
Confere "chaves em texto e separador", s, 1
linha = fso.OpenTextFile(advertencias).ReadLine
Confere "chaves e separador na advertencia", InStr(linha, ";123;7,5;") > 0, True
s = v.Valida_Dados(defeitos, n, trabalho, 1, 2, "A0")
Confere "origem A0 so conta registros", s, 0
Confere "origem A0 nao deixa advertencias", fso.FileExists(advertencias), False
On Error Resume Next
s = v.Valida_Dados(limpo, n, trabalho, "abc")
ConfereErro "chave nao numerica", Err.Number, 13
On Error GoTo 0
On Error Resume Next
s = v.Valida_Dados(limpo, n)
ConfereErro "argumento obrigatorio ausente", Err.Number, 449
On Error GoTo 0
On Error Resume Next
s = v.Valida_Dados(limpo, n, trabalho, 0, 0, "", "", "#", 1)
ConfereErro "argumentos demais", Err.Number, 450
On Error GoTo 0
Confere "nome sem distinguir maiusculas", v.VALIDA_DADOS(limpo, n, trabalho), 0

' Outside a run there is no line to record a warning against.
linha = 3
Confere "Gravar_Erro fora de uma validacao", v.Gravar_Erro(77, linha), False
Confere "linha intocada", linha, 3
Confere "Gravar_Erro sem linha", v.Gravar_Erro(77), False
On Error Resume Next
x = v.Gravar_Erro("x")
ConfereErro "codigo nao numerico", Err.Number, 13
On Error GoTo 0

Termina
