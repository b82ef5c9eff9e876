' clsQuorvAdvBDFichas: walks the warnings of the faulty form file. Arguments: that file, a working
' folder, and the output file where every record is written for comparison with the command line.
Dim f, r, n, s, caminho, saida, lidos
Set f = CreateObject("QuorvValida.ValidacaoFichaCadastral")
n = ""
s = f.Valida_Fichas(WScript.Arguments(0), n, WScript.Arguments(1))
caminho = WScript.Arguments(1) & "\ADVERTENCIAS.TXT"

' A reader without a file: nothing to read, and no line position to ask for.
Set r = CreateObject("QuorvValida.clsQuorvAdvBDFichas")
Confere "TotalRecords sem arquivo", r.TotalRecords, CLng(0)
Confere "EndOfStream sem arquivo", r.EndOfStream, True
On Error Resume Next
x = r.RecordCount
ConfereErro "RecordCount sem arquivo", Err.Number, 91
On Error GoTo 0
r.OpenStream caminho & ".nao"
Confere "arquivo ausente", r.TotalRecords, CLng(0)
On Error Resume Next
x = r.RecordCount
ConfereErro "RecordCount de arquivo ausente", Err.Number, 91
On Error GoTo 0
On Error Resume Next
r.TR = "1"
ConfereErro "propriedade nao se escreve", Err.Number, 438
On Error GoTo 0

' Use the record, then test, then move: the first record is current right after opening.
r.OpenStream caminho
Confere "caminho intocado", caminho, WScript.Arguments(1) & "\ADVERTENCIAS.TXT"
Confere "RecordCount depois de abrir", r.RecordCount, CLng(2)
Confere "TR com 3 caracteres", Len(r.TR), CLng(3)
Confere "Nota com 10 caracteres", Len(r.Nota), CLng(10)
Confere "Descricao com 100 caracteres", Len(r.Descricao), CLng(100)
Set saida = CriaSaida(WScript.Arguments(2))
lidos = 0
Do
  saida.WriteLine r.LINHA & "|" & r.TR & "|" & r.Nota & "|" & r.Descricao
  lidos = lidos + 1
  If r.EndOfStream Then Exit Do
  r.MoveNext
Loop
saida.Close
Confere "registros lidos", CLng(lidos), r.TotalRecords
Confere "RecordCount no fim", r.RecordCount, CLng(lidos + 1)
r.CloseStream
On Error Resume Next
x = r.RecordCount
ConfereErro "RecordCount depois de fechar", Err.Number, 91
On Error GoTo 0
r.CloseStream
r.MoveNext

Termina
