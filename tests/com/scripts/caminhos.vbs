' FileUtility: Windows paths split as text. Argument 1: a file that exists; argument 2: a folder.
Dim u, p, com, sem
Set u = CreateObject("QuorvValida.FileUtility")

p = "C:\dir\sub\file.txt"
Confere "GetDrive de unidade", u.GetDrive(p), "C:"
Confere "GetDrive de rede", u.GetDrive("\\servidor\pasta\file.txt"), "\\servidor"
Confere "GetDrive de rede sem pasta", u.GetDrive("\\servidor"), "\\servidor"
Confere "GetDrive sem unidade", u.GetDrive("dir\file.txt"), ""
Confere "GetFileName sem extensao (padrao)", u.GetFileName(p), "file"
Confere "GetFileName com extensao", u.GetFileName(p, True), "file.txt"
Confere "GetFileName com False", u.GetFileName(p, False), "file"
Confere "GetFileName de nome sem ponto", u.GetFileName("file"), ""
Confere "GetFileName de nome com ponto", u.GetFileName("file.txt", True), "file.txt"
Confere "GetFileName de nome com ponto sem extensao", u.GetFileName("file.txt"), "file"
Confere "GetFileName com ponto na pasta", u.GetFileName("C:\d.ir\file"), ""
Confere "GetFileExtension", u.GetFileExtension("archive.tar.gz"), "gz"
Confere "GetFileExtension sem ponto", u.GetFileExtension("C:\dir\file"), ""
Confere "GetPath com unidade", u.GetPath(p, True), "C:\dir\sub"
Confere "GetPath sem unidade (padrao)", u.GetPath(p), "dir\sub"
Confere "GetPath na raiz", u.GetPath("C:\file.txt"), "file.txt"
Confere "GetPath sem barra", u.GetPath("file.txt", True), ""
Confere "acentos", u.GetFileName("C:\Remessas\São Paulo\remessa ção.txt", True), "remessa ção.txt"

' The flags accept what automation turns into a Boolean.
Confere "flag em texto", u.GetFileName(p, "True"), "file.txt"
Confere "flag numerica", u.GetFileName(p, 1), "file.txt"
On Error Resume Next
x = u.GetFileName(p, "talvez")
ConfereErro "flag invalida", Err.Number, 13
On Error GoTo 0

' The path and the flag are passed by reference and stay as they were.
com = True
p = "C:\dir\sub\file.txt"
Call u.GetFileName(p, com)
Confere "caminho intocado", p, "C:\dir\sub\file.txt"
Confere "flag intocada", com, True
sem = 1
Call u.GetPath(p, sem)
Confere "flag numerica intocada", sem, 1

Confere "FileExists de arquivo", u.FileExists(WScript.Arguments(0)), True
Confere "FileExists de arquivo ausente", u.FileExists(WScript.Arguments(0) & ".nao"), False
Confere "FileExists vazio", u.FileExists(""), False
On Error Resume Next
x = u.FileExists()
ConfereErro "FileExists sem argumento", Err.Number, 449
On Error GoTo 0

Termina
