#include "entrada_padrao.hpp"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <memory>

#include <fmt/core.h>

namespace quorv::ferramenta {
namespace {

// The reason of the last system failure, in Portuguese for the usual ones.
std::string Motivo(int numero) {
  switch (numero) {
    case ENOSPC:
      return "não há espaço no disco";
    case EDQUOT:
      return "a cota de disco acabou";
    case EACCES:
    case EPERM:
      return "sem permissão de escrita";
    case ENOENT:
    case ENOTDIR:
      return "o diretório não existe";
    case EIO:
      return "erro de entrada e saída";
    case EROFS:
      return "o disco é só de leitura";
    default:
      return fmt::format("erro {} do sistema", numero);
  }
}

bool EscreveTudo(int descritor, const char* dados, std::size_t tamanho) {
  while (tamanho > 0) {
    const ssize_t escritos = write(descritor, dados, tamanho);
    if (escritos < 0) {
      if (errno == EINTR) continue;
      return false;
    }
    dados += escritos;
    tamanho -= static_cast<std::size_t>(escritos);
  }
  return true;
}

}  // namespace

EntradaPadrao::~EntradaPadrao() {
  if (descritor_ >= 0) close(descritor_);
  if (apagar_) unlink(caminho_.c_str());
}

bool EntradaPadrao::Recebe(const std::string& diretorio, BarraDeProgresso& barra,
                           std::string& erro) {
  const std::string pasta = std::filesystem::u8path(diretorio).string();
#ifdef O_TMPFILE
  descritor_ = open(pasta.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, 0600);
  if (descritor_ >= 0) caminho_ = fmt::format("/proc/self/fd/{}", descritor_);
#endif
  if (descritor_ < 0) {
    // A file system without nameless files: a hidden name of its own, removed afterwards.
    std::string modelo = pasta + "/.quorvvalida-entrada-XXXXXX";
    descritor_ = mkstemp(modelo.data());
    if (descritor_ < 0) {
      erro = fmt::format("não foi possível criar a cópia da entrada padrão em {}: {}", diretorio,
                         Motivo(errno));
      return false;
    }
    caminho_ = modelo;
    apagar_ = true;
  }
  std::unique_ptr<char[]> bloco(new char[1 << 16]);
  std::uint64_t total = 0;
  for (;;) {
    const ssize_t lidos = read(STDIN_FILENO, bloco.get(), 1 << 16);
    if (lidos == 0) break;
    if (lidos < 0) {
      if (errno == EINTR) continue;
      erro = fmt::format("falha ao ler a entrada padrão: {}", Motivo(errno));
      return false;
    }
    if (!EscreveTudo(descritor_, bloco.get(), static_cast<std::size_t>(lidos))) {
      erro = fmt::format("falha ao gravar a cópia da entrada padrão em {}: {}", diretorio,
                         Motivo(errno));
      return false;
    }
    total += static_cast<std::uint64_t>(lidos);
    barra.Mostra(
        fmt::format("lendo a entrada padrao: {:.1f} MB", static_cast<double>(total) / 1e6));
  }
  barra.Encerra();
  return true;
}

}  // namespace quorv::ferramenta
