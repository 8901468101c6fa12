-- Unsigned product, of which a comes a cycle before b: its triple is made in between. `borders` and `blocks` are told
-- at xfc_unsigned_product.
library ieee;
use ieee.std_logic_1164.all;
use ieee.numeric_std.all;

entity xfc_early_product is
  generic (a_bits  : positive;
           b_bits  : positive;   -- at most 64
           borders : natural;
           blocks  : natural);
  port (sysclk, enable : in std_logic;
        early_a : in std_logic_vector(a_bits - 1 downto 0);
        b       : in std_logic_vector(b_bits - 1 downto 0);
        product : out std_logic_vector(a_bits + b_bits - 1 downto 0));
end xfc_early_product;

architecture rtl of xfc_early_product is
  signal a : std_logic_vector(a_bits - 1 downto 0);
  signal triple_d, triple : std_logic_vector(a_bits + 1 downto 0);
begin
  triple_d <= std_logic_vector(resize(unsigned(early_a), a_bits + 2) + unsigned(early_a & '0'));
  early_0 : entity work.xfc_register generic map (a_bits, 1) port map (sysclk, enable, early_a, a);
  early_1 : entity work.xfc_register generic map (a_bits + 2, 1) port map (sysclk, enable, triple_d, triple);
  multiply : entity work.xfc_unsigned_product generic map (a_bits, b_bits, borders, blocks)
    port map (sysclk, enable, a, triple, b, product);
end rtl;
