' ValidacaoTarnWEB: the web system's entry points. Arguments: the faulty invoice file, the clean
' form file, a working folder.
Dim w, notas, fichas, trabalho, n, texto
Set w = CreateObject("QuorvValida.ValidacaoTarnWEB")
notas = WScript.Arguments(0)
fichas = WScript.Arguments(1)
trabalho = WScript.Arguments(2)

' The two properties can be written, never read.
w.ProgramaChamador = "sistema"
w.TipoArquivo = "REM"
On Error Resume Next
x = w.ProgramaChamador
ConfereErro "ProgramaChamador nao se le", Err.Number, 438
On Error GoTo 0
On Error Resume Next
x = w.TipoArquivo
ConfereErro "TipoArquivo nao se le", Err.Number, 438
On Error GoTo 0
w.ProgramaChamador = ""

n = Empty
Confere "notas com defeitos", w.Valida_Dados_Tarnweb(notas, "\RETORNO.TXT", trabalho, n), True
Confere "origem A0: so a estrutura", fso.FileExists(trabalho & "\RETORNO.TXT"), False
Confere "numero da remessa", n, "000001"
w.ProgramaChamador = "sistema"
Confere "notas conferidas", w.Valida_Dados_Tarnweb(notas, "\RETORNO.TXT", trabalho, n), False
Confere "retorno escrito", fso.FileExists(trabalho & "\RETORNO.TXT"), True
Confere "advertencias apagadas", fso.FileExists(trabalho & "\ADVERTENCIAS.TXT"), False
fso.DeleteFile trabalho & "\RETORNO.TXT"

n = ""
Confere "ficha limpa", w.Valida_Dados_Ficha_Cadastral(fichas, "\RETORNO.TXT", trabalho, n), True
Confere "numero da ficha", n, "000001"
Confere "Valida_TIPO P", w.Valida_TIPO(notas, "\RETORNO.TXT", trabalho, n, "P"), False
Confere "Valida_TIPO F", w.Valida_TIPO(fichas, "\RETORNO.TXT", trabalho, n, "F"), True
Confere "Valida_TIPO p minusculo", w.Valida_TIPO(fichas, "\RETORNO.TXT", trabalho, n, "p"), False
On Error Resume Next
x = w.Valida_TIPO(fichas, "\R.TXT", trabalho, n)
ConfereErro "Valida_TIPO sem tipo", Err.Number, 449
On Error GoTo 0

' BreakString cuts at blanks into lines of at most piMaxLen characters.
texto = "O numero da nota fiscal nao confere com o total"
Confere "BreakString 1", w.BreakString(texto, 1, 20), "O numero da nota"
Confere "BreakString 2", w.BreakString(texto, 2, 20), "fiscal nao confere"
Confere "BreakString 3", w.BreakString(texto, 3, 20), "com o total"
Confere "BreakString alem do fim", w.BreakString(texto, 9, 20), ""
Confere "BreakString com texto numerico", w.BreakString(texto, "1", "20"), "O numero da nota"
On Error Resume Next
x = w.BreakString(texto, 1, 99999)
ConfereErro "BreakString Integer invalido", Err.Number, 6
On Error GoTo 0

Termina
