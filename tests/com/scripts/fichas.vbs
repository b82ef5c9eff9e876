' ValidacaoFichaCadastral: its ten fields and its methods. Arguments: the clean form file, the
' faulty one, and a working folder.
Dim f, limpo, defeitos, trabalho, advertencias, n, s, pasta, linha
Set f = CreateObject("QuorvValida.ValidacaoFichaCadastral")
limpo = WScript.Arguments(0)
defeitos = WScript.Arguments(1)
trabalho = WScript.Arguments(2)
advertencias = trabalho & "\ADVERTENCIAS.TXT"

' The fields read back what was written, in their own types.
f.sNumeroRemessaRef = "123456"
Confere "sNumeroRemessaRef", f.sNumeroRemessaRef, "123456"
f.sTipo_Solicitacao = "A"
Confere "sTipo_Solicitacao", f.sTipo_Solicitacao, "A"
f.sNro_Solicitacao = "0000000001"
Confere "sNro_Solicitacao", f.sNro_Solicitacao, "0000000001"
f.iOrdem_Faturamento = "7"
Confere "iOrdem_Faturamento de texto", f.iOrdem_Faturamento, CInt(7)
f.iOrdem_Talao = 3
Confere "iOrdem_Talao", f.iOrdem_Talao, CInt(3)
f.Dt_Inicio_Atividade = "20240101"
Confere "Dt_Inicio_Atividade", f.Dt_Inicio_Atividade, "20240101"
f.Dt_Fim_Atividade = "20241231"
Confere "Dt_Fim_Atividade", f.Dt_Fim_Atividade, "20241231"
f.contSolicitacao = 100000
Confere "contSolicitacao", f.contSolicitacao, CLng(100000)
f.contInscricao = -5
Confere "contInscricao", f.contInscricao, CLng(-5)
f.bTem_Erro_Grave = True
Confere "bTem_Erro_Grave", f.bTem_Erro_Grave, True
f.bTem_Erro_Grave = 0
Confere "bTem_Erro_Grave de numero", f.bTem_Erro_Grave, False
On Error Resume Next
f.iOrdem_Talao = 40000
ConfereErro "Integer fora da faixa", Err.Number, 6
On Error GoTo 0
On Error Resume Next
f.contInscricao = "muitos"
ConfereErro "Long de texto invalido", Err.Number, 13
On Error GoTo 0

' A run overwrites what it fills; values written before it change nothing in its result.
f.sNumeroRemessaRef = "XXXXXX"
f.contSolicitacao = 99
n = ""
s = f.Valida_Fichas(limpo, n, trabalho)
Confere "ficha limpa termina no trailer", s, 8
Confere "ficha limpa nao deixa advertencias", fso.FileExists(advertencias), False
Confere "numero da remessa", n, f.sNumeroRemessaRef
Confere "contSolicitacao recontado", f.contSolicitacao <> 99, True
Confere "sem erro grave", f.bTem_Erro_Grave, False

n = Empty
s = f.Valida_Fichas(defeitos, n, trabalho, 0, 0, "", "", "#")
Confere "ficha com defeitos", s, 8
Confere "advertencias escritas", fso.FileExists(advertencias), True
Confere "numero devolvido", TypeName(n), "String"

n = "intocado"
Confere "arquivo ausente", f.Valida_Fichas(limpo & ".nao", n, trabalho), 9
Confere "numero intocado", n, "intocado"

' The closing step always answers False and leaves its argument alone.
pasta = trabalho
Confere "Procedimentos_Finais_Fichas", f.Procedimentos_Finais_Fichas(pasta), False
Confere "pasta intocada", pasta, trabalho
On Error Resume Next
x = f.Procedimentos_Finais_Fichas()
ConfereErro "Procedimentos_Finais_Fichas sem argumento", Err.Number, 449
On Error GoTo 0

linha = 0
Confere "Gravar_Erro_Ficha fora de uma validacao", f.Gravar_Erro_Ficha(1, linha), False
Confere "Gravar_Erro_Ficha sem linha", f.Gravar_Erro_Ficha(1), False
Confere "Gravar_Erro_FichaTR110 fora de uma validacao", f.Gravar_Erro_FichaTR110(1), False
Confere "Gravar_Erro_FichaTR110 com linha", f.Gravar_Erro_FichaTR110(1, 5), False

Termina
