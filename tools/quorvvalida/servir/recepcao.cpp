#include "recepcao.hpp"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace quorv::servico {
namespace {

constexpr std::size_t kBuffer = std::size_t{256} * 1024;

// The line feeds in a block of bytes.
std::uint64_t ContaQuebras(const char* dados, std::size_t tamanho) {
  std::uint64_t quebras = 0;
  const char* const fim = dados + tamanho;
  for (const void* quebra = std::memchr(dados, '\n', tamanho); quebra != nullptr;) {
    ++quebras;
    const char* depois = static_cast<const char*>(quebra) + 1;
    quebra = std::memchr(depois, '\n', static_cast<std::size_t>(fim - depois));
  }
  return quebras;
}

}  // namespace

Recepcao::Recepcao(const std::string& caminho, const Limites& limites)
    : limites_(limites),
      inicio_(std::chrono::steady_clock::now()),
      ultimaChegada_(inicio_),
      buffer_(kBuffer) {
  descritor_ = ::open(caminho.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
}

Recepcao::~Recepcao() {
  if (descritor_ >= 0) ::close(descritor_);
}

bool Recepcao::Campo(const std::string& nome) {
  if (nome != "arquivo" || campos_ > 0) {
    falha_ = Falha::kCampo;
    return false;
  }
  ++campos_;
  return true;
}

bool Recepcao::Recebe(const char* dados, std::size_t tamanho) {
  ultimaChegada_ = std::chrono::steady_clock::now();
  if (bytes_ + tamanho > limites_.bytes) {
    falha_ = Falha::kGrande;
    return false;
  }
  // The time allowed grows with what has arrived, so a large file sent at a fair pace goes
  // through while a client that trickles bytes is cut off.
  const double permitido = limites_.segundosBase + static_cast<double>(bytes_ + tamanho) /
                                                       static_cast<double>(limites_.taxaMinima);
  if (std::chrono::duration<double>(ultimaChegada_ - inicio_).count() > permitido) {
    falha_ = Falha::kLenta;
    return false;
  }
  if (tamanho == 0) return true;
  quebras_ += ContaQuebras(dados, tamanho);
  ultimo_ = dados[tamanho - 1];
  bytes_ += tamanho;
  if (!Grava(dados, tamanho)) {
    falha_ = Falha::kEscrita;
    return false;
  }
  return true;
}

bool Recepcao::EscreveTudo(const char* dados, std::size_t tamanho) {
  while (tamanho > 0) {
    const ssize_t n = ::write(descritor_, dados, tamanho);
    if (n < 0 && errno == EINTR) continue;
    if (n <= 0) return false;
    dados += n;
    tamanho -= static_cast<std::size_t>(n);
  }
  return true;
}

bool Recepcao::Descarrega() {
  const bool ok = EscreveTudo(buffer_.data(), usados_);
  usados_ = 0;
  return ok;
}

bool Recepcao::Grava(const char* dados, std::size_t tamanho) {
  if (usados_ + tamanho > buffer_.size()) {
    if (!Descarrega()) return false;
    if (tamanho >= buffer_.size()) return EscreveTudo(dados, tamanho);
  }
  std::memcpy(buffer_.data() + usados_, dados, tamanho);
  usados_ += tamanho;
  return true;
}

bool Recepcao::Conclui() {
  if (descritor_ < 0) return false;
  bool ok = Descarrega();
  if (::close(descritor_) != 0) ok = false;
  descritor_ = -1;
  if (!ok) falha_ = Falha::kEscrita;
  return ok;
}

double Recepcao::SegundosParado() const {
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - ultimaChegada_).count();
}

}  // namespace quorv::servico
