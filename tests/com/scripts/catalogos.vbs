' clsQuorvMsg and clsQuorvMsgFichas: every code's text goes to the output file (argument 1) for
' comparison with the command line's catalogue; the checks below cover how hosts pass the code.
Dim notas, fichas, saida, codigo, n
Set notas = CreateObject("QuorvValida.clsQuorvMsg")
Set fichas = CreateObject("QuorvValida.clsQuorvMsgFichas")
Set saida = CriaSaida(WScript.Arguments(0))
For n = -2 To 400
  codigo = n
  saida.WriteLine "notas|" & n & "|" & notas.MensagemAdvertencia(codigo)
  codigo = n
  saida.WriteLine "fichas|" & n & "|" & fichas.MensagemAdvertenciaFichas(codigo)
Next
saida.Close

' The code is passed by reference and comes back as it went.
codigo = 77
Call notas.MensagemAdvertencia(codigo)
Confere "codigo depois da chamada", codigo, 77
codigo = "77"
Confere "codigo em texto", notas.MensagemAdvertencia(codigo), notas.MensagemAdvertencia(77)
Confere "codigo em texto continua texto", codigo, "77"
codigo = 77.4
Confere "codigo com decimais", notas.MensagemAdvertencia(codigo), notas.MensagemAdvertencia(77)
Confere "literal", notas.mensagemadvertencia(148), notas.MensagemAdvertencia(CInt(148))
Confere "nome em maiusculas", fichas.MENSAGEMADVERTENCIAFICHAS(1), fichas.MensagemAdvertenciaFichas(1)

' Arguments that are not an Integer are refused as automation refuses them.
On Error Resume Next
x = notas.MensagemAdvertencia("abc")
ConfereErro "texto nao numerico", Err.Number, 13
On Error GoTo 0
On Error Resume Next
x = notas.MensagemAdvertencia(70000)
ConfereErro "fora da faixa de Integer", Err.Number, 6
On Error GoTo 0
On Error Resume Next
x = notas.MensagemAdvertencia()
ConfereErro "sem argumento", Err.Number, 449
On Error GoTo 0
On Error Resume Next
x = notas.MensagemAdvertencia(1, 2)
ConfereErro "argumento a mais", Err.Number, 450
On Error GoTo 0
On Error Resume Next
x = notas.Mensagem(1)
ConfereErro "membro que nao existe", Err.Number, 438
On Error GoTo 0

' Creation by ProgID of every public class; the invoice reader stays private.
Dim classe
On Error Resume Next
For Each classe In Array("Validacao", "ValidacaoFichaCadastral", "ValidacaoTarnWEB", _
                         "FileUtility", "clsQuorvMsg", "clsQuorvMsgFichas", "clsQuorvAdvBDFichas")
  Set x = CreateObject("QuorvValida." & classe)
  ConfereErro "criacao de " & classe, Err.Number, 0
Next
Set x = CreateObject("QuorvValida.clsQuorvAdvBD")
ConfereErro "clsQuorvAdvBD nao e criavel", Err.Number, 429
On Error GoTo 0

Termina
