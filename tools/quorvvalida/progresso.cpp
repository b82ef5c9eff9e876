#include "progresso.hpp"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string>

#include <fmt/core.h>

#ifdef _WIN32
#include <io.h>
#include <windows.h>
#else
#include <sys/ioctl.h>
#include <unistd.h>
#endif

namespace quorv::ferramenta {
namespace {

std::string Duracao(double segundos) {
  const long long total = std::llround(segundos);
  return fmt::format("{}:{:02}", total / 60, total % 60);
}

std::string Megabytes(double bytes) {
  return fmt::format("{:.1f}", bytes / 1e6);
}

}  // namespace

bool ErroEhTerminal() {
#ifdef _WIN32
  return _isatty(_fileno(stderr)) != 0;
#else
  return isatty(fileno(stderr)) != 0;
#endif
}

int LarguraDoTerminal() {
#ifdef _WIN32
  CONSOLE_SCREEN_BUFFER_INFO info;
  if (GetConsoleScreenBufferInfo(GetStdHandle(STD_ERROR_HANDLE), &info)) {
    return info.srWindow.Right - info.srWindow.Left + 1;
  }
#else
  winsize tamanho{};
  if (ioctl(fileno(stderr), TIOCGWINSZ, &tamanho) == 0 && tamanho.ws_col > 0) {
    return tamanho.ws_col;
  }
#endif
  return 80;
}

std::string LinhaDeProgresso(double fracao, const std::string& texto, int largura) {
  const std::size_t colunas = static_cast<std::size_t>(std::max(largura - 1, 0));
  fracao = std::clamp(fracao, 0.0, 1.0);
  const std::string porcento = fmt::format(" {:3.0f}% ", fracao * 100);
  // The bar takes what the texts leave, between 10 and 30 columns.
  const std::size_t resto = colunas > porcento.size() + texto.size() + 2
                                ? colunas - porcento.size() - texto.size() - 2
                                : 0;
  const std::size_t barra = std::clamp<std::size_t>(resto, 10, 30);
  const auto cheios = static_cast<std::size_t>(fracao * static_cast<double>(barra));
  std::string linha =
      "[" + std::string(cheios, '#') + std::string(barra - cheios, '-') + "]" + porcento + texto;
  if (linha.size() > colunas) linha.resize(colunas);
  return linha;
}

BarraDeProgresso::BarraDeProgresso(bool ativa)
    : ativa_(ativa && ErroEhTerminal()),
      inicio_(std::chrono::steady_clock::now()),
      ultimoDesenho_(inicio_) {}

BarraDeProgresso::~BarraDeProgresso() {
  Encerra();
}

void BarraDeProgresso::Inicia(const std::vector<Tipo>& tipos,
                              const std::vector<std::uint64_t>& tamanhos) {
  std::lock_guard<std::mutex> trava(trava_);
  tipos_ = tipos;
  tamanhos_ = tamanhos;
  feitos_.assign(tamanhos.size(), 0.0);
  concluidos_ = 0;
  totalBytes_ = 0;
  for (const std::uint64_t tamanho : tamanhos)
    totalBytes_ += tamanho;
  inicio_ = std::chrono::steady_clock::now();
}

bool BarraDeProgresso::PodeDesenhar() {
  const auto agora = std::chrono::steady_clock::now();
  if (desenhou_ && agora - ultimoDesenho_ < std::chrono::milliseconds(100)) return false;
  ultimoDesenho_ = agora;
  return true;
}

void BarraDeProgresso::Atualiza(std::size_t indice, double porcentagem) {
  if (!ativa_) return;
  std::lock_guard<std::mutex> trava(trava_);
  if (indice >= feitos_.size()) return;
  // The invoice validator counts what it read in 128-byte units against 162-byte lines; the
  // form validator counts lines. Both become a share of the file here.
  double parte = porcentagem / 100.0;
  if (tipos_[indice] == Tipo::kNotas) parte = parte * 128.0 / 162.0;
  feitos_[indice] = std::clamp(parte, 0.0, 1.0);
  if (PodeDesenhar()) Desenha();
}

void BarraDeProgresso::Conclui(std::size_t indice) {
  if (!ativa_) return;
  std::lock_guard<std::mutex> trava(trava_);
  if (indice >= feitos_.size()) return;
  feitos_[indice] = 1.0;
  ++concluidos_;
  if (PodeDesenhar()) Desenha();
}

void BarraDeProgresso::Desenha() {
  double bytes = 0;
  for (std::size_t i = 0; i < feitos_.size(); ++i)
    bytes += feitos_[i] * static_cast<double>(tamanhos_[i]);
  const double total = static_cast<double>(totalBytes_);
  const double fracao = total > 0 ? bytes / total : 0;
  const double segundos =
      std::chrono::duration<double>(std::chrono::steady_clock::now() - inicio_).count();
  const double porSegundo = segundos > 0 ? bytes / segundos : 0;
  const std::string restante =
      porSegundo > 0 ? Duracao((total - bytes) / porSegundo) : std::string("--:--");
  std::string texto;
  if (feitos_.size() == 1) {
    const double largura = tipos_[0] == Tipo::kNotas ? 162.0 : 262.0;
    texto = fmt::format(" {:.0f} linhas/s  faltam {}", porSegundo / largura, restante);
  } else {
    texto = fmt::format(" {}/{} arquivos  {}/{} MB  faltam {}", concluidos_, feitos_.size(),
                        Megabytes(bytes), Megabytes(total), restante);
  }
  Escreve(LinhaDeProgresso(fracao, texto, LarguraDoTerminal()));
}

void BarraDeProgresso::Mostra(const std::string& texto) {
  if (!ativa_) return;
  std::lock_guard<std::mutex> trava(trava_);
  if (!PodeDesenhar()) return;
  std::string linha = texto;
  const auto colunas = static_cast<std::size_t>(std::max(LarguraDoTerminal() - 1, 0));
  if (linha.size() > colunas) linha.resize(colunas);
  Escreve(linha);
}

void BarraDeProgresso::Escreve(const std::string& linha) {
  // Back to the line's start, the new text, and the rest of the old one erased.
  fmt::print(stderr, "\r{}\x1b[K", linha);
  std::fflush(stderr);
  desenhou_ = true;
}

void BarraDeProgresso::Encerra() {
  if (!ativa_) return;
  std::lock_guard<std::mutex> trava(trava_);
  if (!desenhou_) return;
  fmt::print(stderr, "\r\x1b[K");
  std::fflush(stderr);
  desenhou_ = false;
}

}  // namespace quorv::ferramenta
