-- Unsigned product: every two bits of b choose a multiple of a, a tree adds these. The triple of a comes from outside,
-- where it is often ready before b is. Bit 0 of borders puts a register behind the multiples, bit L one behind level L
-- of the tree; level L adds parts of 2 ** L bits of b. With `blocks` the product is the operator's, for multiplier
-- blocks, and as many registers stand behind it.
library ieee;
use ieee.std_logic_1164.all;
use ieee.numeric_std.all;

entity xfc_unsigned_product is
  generic (a_bits  : positive;
           b_bits  : positive;   -- at most 64
           borders : natural;
           blocks  : natural);
  port (sysclk, enable : in std_logic;
        a       : in std_logic_vector(a_bits - 1 downto 0);
        triple  : in std_logic_vector(a_bits + 1 downto 0);   -- 3 a
        b       : in std_logic_vector(b_bits - 1 downto 0);
        product : out std_logic_vector(a_bits + b_bits - 1 downto 0));
end xfc_unsigned_product;

architecture rtl of xfc_unsigned_product is
  constant levels : natural := boolean'pos(b_bits > 2) + boolean'pos(b_bits > 4) + boolean'pos(b_bits > 8) +
                               boolean'pos(b_bits > 16) + boolean'pos(b_bits > 32);
  constant registers : natural := borders mod 2 + borders / 2 mod 2 + borders / 4 mod 2 + borders / 8 mod 2 +
                                  borders / 16 mod 2 + borders / 32 mod 2;
begin
  assert b_bits <= 64 report "xfc_unsigned_product: b has at most 64 bits" severity failure;
  assert borders < 2 ** (levels + 1) report "xfc_unsigned_product: there are not so many borders" severity failure;

  operator : if blocks = 1 generate
    signal product_d : std_logic_vector(a_bits + b_bits - 1 downto 0);
  begin
    product_d <= std_logic_vector(unsigned(a) * unsigned(b));
    behind : entity work.xfc_registers generic map (a_bits + b_bits, registers)
      port map (sysclk, enable, product_d, product);
  end generate;

  tree : if blocks /= 1 generate
    root : entity work.xfc_unsigned_product_part generic map (a_bits, b_bits, levels, borders)
      port map (sysclk, enable, a, triple, b, product);
  end generate;
end rtl;
