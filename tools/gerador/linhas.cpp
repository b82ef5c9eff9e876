#include "linhas.hpp"

#include <stdexcept>

namespace quorv::gerador {

std::string Zeros(std::uint64_t valor, std::size_t largura) {
  std::string digitos = std::to_string(valor);
  if (digitos.size() < largura) digitos.insert(0, largura - digitos.size(), '0');
  return digitos;
}

std::string Inscricao(std::string_view prefixo, std::uint64_t serie, std::size_t digitos) {
  std::string numero(prefixo);
  numero += Zeros(serie, digitos - 1 - prefixo.size());
  int soma = 0;
  for (char c : numero)
    soma += c - '0';
  numero += static_cast<char>('0' + soma % 10);
  return numero;
}

std::string DataMaisDias(int ano, int mes, int dia, int dias) {
  static constexpr int kDias[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  dia += dias;
  for (;;) {
    const bool bissexto = (ano % 4 == 0 && ano % 100 != 0) || ano % 400 == 0;
    const int noMes = mes == 2 && bissexto ? 29 : kDias[mes - 1];
    if (dia <= noMes) break;
    dia -= noMes;
    if (++mes > 12) {
      mes = 1;
      ++ano;
    }
  }
  return Zeros(static_cast<std::uint64_t>(ano), 4) + Zeros(static_cast<std::uint64_t>(mes), 2) +
         Zeros(static_cast<std::uint64_t>(dia), 2);
}

Linhas::Linhas(std::FILE* saida, std::size_t largura, std::size_t larguraTipo)
    : saida_(saida), larguraTipo_(larguraTipo), linha_(largura, ' ') {}

Linhas& Linhas::Novo(std::string_view tipo) {
  linha_.assign(linha_.size(), ' ');
  ++numero_;
  Campo(1, 8, Zeros(numero_, 8));
  Campo(9, static_cast<int>(larguraTipo_), tipo);
  ++totais_[std::string(tipo)];
  ++parciais_[std::string(tipo)];
  return *this;
}

Linhas& Linhas::Campo(int coluna, int largura, std::string_view valor) {
  const auto inicio = static_cast<std::size_t>(coluna - 1);
  if (valor.size() > static_cast<std::size_t>(largura) ||
      inicio + static_cast<std::size_t>(largura) > linha_.size()) {
    throw std::logic_error("campo fora da linha na coluna " + std::to_string(coluna));
  }
  linha_.replace(inicio, valor.size(), valor);
  linha_.replace(inicio + valor.size(), static_cast<std::size_t>(largura) - valor.size(),
                 static_cast<std::size_t>(largura) - valor.size(), ' ');
  return *this;
}

void Linhas::Grava() {
  std::fwrite(linha_.data(), 1, linha_.size(), saida_);
  std::fwrite("\r\n", 1, 2, saida_);
}

std::uint64_t Linhas::Quantos(std::string_view tipo) const {
  const auto achado = totais_.find(tipo);
  return achado == totais_.end() ? 0 : achado->second;
}

std::uint64_t Linhas::QuantosDesdeZera(std::string_view tipo) const {
  const auto achado = parciais_.find(tipo);
  return achado == parciais_.end() ? 0 : achado->second;
}

}  // namespace quorv::gerador
