' Runs the validations listed in a job file (argument 1, UTF-16, one job a line, fields split by
' "|") and writes each one's answer to the result file (argument 2), for comparison with the
' command line on the same files. Jobs:
'   notas|ARQUIVO|DIRETORIO|CHAVE_REMESSA|CHAVE_PROCESSAMENTO|ORIGEM|SERVIDOR|SEPARADOR
'   fichas|... (the same fields)
'   web|TIPO|ARQUIVO|DIRETORIO|PROGRAMA_CHAMADOR|TIPO_ARQUIVO   (TIPO: P or F)
' Results: the job's first field, then the status (or the facade's answer: -1 true, 0 false) and
' the remessa number. Keys go as texts, as a host reading them from a form would pass them.
Dim tarefas, saida, linha, campo, n, resposta, objeto
tarefas = Split(LeTudo(WScript.Arguments(0)), vbCrLf)
Set saida = CriaSaida(WScript.Arguments(1))
For Each linha In tarefas
  If Len(linha) > 0 Then
    campo = Split(linha, "|")
    n = ""
    Select Case campo(0)
      Case "notas"
        Set objeto = CreateObject("QuorvValida.Validacao")
        resposta = objeto.Valida_Dados(campo(1), n, campo(2), campo(3), campo(4), campo(5), _
                                       campo(6), campo(7))
      Case "fichas"
        Set objeto = CreateObject("QuorvValida.ValidacaoFichaCadastral")
        resposta = objeto.Valida_Fichas(campo(1), n, campo(2), campo(3), campo(4), campo(5), _
                                        campo(6), campo(7))
      Case "web"
        Set objeto = CreateObject("QuorvValida.ValidacaoTarnWEB")
        If Len(campo(4)) > 0 Then objeto.ProgramaChamador = campo(4)
        If Len(campo(5)) > 0 Then objeto.TipoArquivo = campo(5)
        resposta = objeto.Valida_TIPO(campo(2), "\RETORNO.TXT", campo(3), n, campo(1))
      Case Else
        Falha "tarefa desconhecida: " & linha
    End Select
    saida.WriteLine campo(0) & "|" & CInt(resposta) & "|" & n
  End If
Next
saida.Close
Termina
