// The table of warnings with virtual scrolling: only the rows in sight exist in the page, so a
// million warnings scroll as a hundred do. Keyboard: arrows, Page Up/Down, Home and End move the
// current row, Enter opens it.
const MAIOR_ALTURA = 15_000_000;  // browsers stop growing an element somewhat above this (px)
const FOLGA = 6;

export class TabelaVirtual {
  constructor(grade, rolagem, espaco, aoAbrir) {
    this.grade = grade;
    this.rolagem = rolagem;
    this.espaco = espaco;
    this.aoAbrir = aoAbrir;
    this.visiveis = new Uint32Array();
    this.ativa = -1;
    this.linhas = [];
    rolagem.addEventListener('scroll', () => this.desenha());
    new ResizeObserver(() => this.desenha()).observe(rolagem);
    grade.addEventListener('keydown', (evento) => this.tecla(evento));
  }

  // A row's height in pixels: the stylesheet gives it in rem (--altura-linha), taller on phones.
  altura() {
    const rem = parseFloat(getComputedStyle(document.documentElement).fontSize);
    return rem * parseFloat(getComputedStyle(this.grade).getPropertyValue('--altura-linha'));
  }

  mostra(resultado, visiveis) {
    this.r = resultado;
    this.visiveis = visiveis;
    this.ativa = visiveis.length > 0 ? 0 : -1;
    this.grade.setAttribute('aria-rowcount', String(visiveis.length + 1));
    this.rolagem.scrollTop = 0;
    this.desenha();
  }

  // Past the largest height a browser draws, the scroll bar stands for the rows in proportion.
  geometria() {
    const h = this.altura();
    const total = this.visiveis.length * h;
    const real = Math.min(total, MAIOR_ALTURA);
    const janela = this.rolagem.clientHeight;
    const fator = real > janela ? (total - janela) / (real - janela) : 1;
    return {h, real, fator};
  }

  desenha() {
    const {h, real, fator} = this.geometria();
    this.espaco.style.height = `${real}px`;
    const topo = this.rolagem.scrollTop;
    const virtual = topo * fator;
    const primeira = Math.max(0, Math.floor(virtual / h) - FOLGA);
    const ultima = Math.min(
        this.visiveis.length, Math.ceil((virtual + this.rolagem.clientHeight) / h) + FOLGA);
    const r = this.r;
    let usadas = 0;
    for (let pos = primeira; pos < ultima; ++pos, ++usadas) {
      let linha = this.linhas[usadas];
      if (!linha) {
        linha = document.createElement('div');
        linha.className = 'linha';
        linha.setAttribute('role', 'row');
        linha.innerHTML =
            '<span role="gridcell" class="c-linha"></span><span role="gridcell" class="c-tr"></span>' +
            '<span role="gridcell" class="c-codigo"></span><span role="gridcell" class="c-mensagem"></span>';
        linha.addEventListener('click', () => {
          this.ativa = Number(linha.dataset.pos);
          this.desenha();
          this.aoAbrir(this.visiveis[this.ativa]);
        });
        this.linhas.push(linha);
        this.espaco.append(linha);
      }
      const indice = this.visiveis[pos];
      const codigo = r.codigos[r.colCodigo[indice]];
      const celulas = linha.children;
      const numeroLinha = r.linhas[indice];
      celulas[0].textContent = Number.isNaN(numeroLinha) ? '—' : String(numeroLinha);
      celulas[1].textContent = r.trs[r.colTR[indice]];
      celulas[2].textContent = codigo.numero === null ? codigo.texto : String(codigo.numero);
      celulas[3].textContent = codigo.mensagem;
      celulas[3].title = codigo.mensagem;
      linha.dataset.pos = String(pos);
      linha.id = `advertencia-${pos}`;
      linha.setAttribute('aria-rowindex', String(pos + 2));
      linha.classList.toggle('ativa', pos === this.ativa);
      linha.setAttribute('aria-selected', String(pos === this.ativa));
      linha.style.top = `${topo + pos * h - virtual}px`;
      linha.hidden = false;
    }
    for (let i = usadas; i < this.linhas.length; ++i)
      this.linhas[i].hidden = true;
    if (this.ativa >= primeira && this.ativa < ultima) {
      this.grade.setAttribute('aria-activedescendant', `advertencia-${this.ativa}`);
    } else {
      this.grade.removeAttribute('aria-activedescendant');
    }
  }

  // Scrolls so that the current row is in sight.
  revela() {
    const {h, fator} = this.geometria();
    const janela = this.rolagem.clientHeight;
    const virtual = this.rolagem.scrollTop * fator;
    const topoLinha = this.ativa * h;
    if (topoLinha < virtual)
      this.rolagem.scrollTop = topoLinha / fator;
    else if (topoLinha + h > virtual + janela)
      this.rolagem.scrollTop = (topoLinha + h - janela) / fator;
    this.desenha();
  }

  tecla(evento) {
    const n = this.visiveis.length;
    if (n === 0) return;
    const pagina = Math.max(1, Math.floor(this.rolagem.clientHeight / this.altura()) - 1);
    const movimentos = {
      ArrowDown: 1,
      ArrowUp: -1,
      PageDown: pagina,
      PageUp: -pagina,
      Home: -n,
      End: n,
    };
    if (evento.key in movimentos) {
      evento.preventDefault();
      this.ativa = Math.min(n - 1, Math.max(0, this.ativa + movimentos[evento.key]));
      this.revela();
    } else if (evento.key === 'Enter' || evento.key === ' ') {
      evento.preventDefault();
      if (this.ativa >= 0) this.aoAbrir(this.visiveis[this.ativa]);
    }
  }
}
