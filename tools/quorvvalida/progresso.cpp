#include "progresso.hpp"

#include <algorithm>
#include <cmath>
#include <string>

#include <fmt/core.h>

#ifdef _WIN32
#include <io.h>
#else
#include <unistd.h>
#endif

namespace quorv::ferramenta {
namespace {

constexpr int kLargura = 30;

std::string Duracao(double segundos) {
  const long long total = std::llround(segundos);
  return fmt::format("{}:{:02}", total / 60, total % 60);
}

}  // namespace

bool ErroEhTerminal() {
#ifdef _WIN32
  return _isatty(_fileno(stderr)) != 0;
#else
  return isatty(fileno(stderr)) != 0;
#endif
}

BarraDeProgresso::BarraDeProgresso(bool ativa, Tipo tipo, std::uint64_t tamanho)
    : ativa_(ativa),
      tipo_(tipo),
      linhasTotais_(static_cast<double>(tamanho) / (tipo == Tipo::kNotas ? 162.0 : 262.0)),
      inicio_(std::chrono::steady_clock::now()),
      ultimoDesenho_(inicio_) {}

BarraDeProgresso::~BarraDeProgresso() {
  Encerra();
}

void BarraDeProgresso::Atualiza(double porcentagem) {
  if (!ativa_ || linhasTotais_ <= 0) return;
  // The bar shows at the first figure, then follows at most ten times a second.
  const auto agora = std::chrono::steady_clock::now();
  if (desenhou_ && agora - ultimoDesenho_ < std::chrono::milliseconds(100)) return;
  ultimoDesenho_ = agora;
  // The invoice validator counts what it read in 128-byte units against 162-byte lines; the
  // form validator counts lines. Both become lines read here.
  const double parte = porcentagem / 100.0;
  const double linhas =
      tipo_ == Tipo::kNotas ? parte * linhasTotais_ * 128.0 / 162.0 : parte * linhasTotais_;
  Desenha(std::clamp(linhas, 0.0, linhasTotais_));
}

void BarraDeProgresso::Desenha(double linhas) {
  const double segundos =
      std::chrono::duration<double>(std::chrono::steady_clock::now() - inicio_).count();
  const double fracao = linhas / linhasTotais_;
  const double porSegundo = segundos > 0 ? linhas / segundos : 0;
  const int cheios = static_cast<int>(fracao * kLargura);
  const std::string restante =
      porSegundo > 0 ? Duracao((linhasTotais_ - linhas) / porSegundo) : std::string("--:--");
  fmt::print(stderr, "\r[{}{}] {:3.0f}%  {:.0f} linhas/s  faltam {}   ",
             std::string(static_cast<std::size_t>(cheios), '#'),
             std::string(static_cast<std::size_t>(kLargura - cheios), '-'), fracao * 100,
             porSegundo, restante);
  std::fflush(stderr);
  desenhou_ = true;
}

void BarraDeProgresso::Encerra() {
  if (!desenhou_) return;
  fmt::print(stderr, "\r{}\r", std::string(80, ' '));
  std::fflush(stderr);
  desenhou_ = false;
}

}  // namespace quorv::ferramenta
