-- Shifts a value left by distance * unit bits; what comes in from the right is `fill`. Several of these behind each
-- other make a long shift with registers between.
library ieee;
use ieee.std_logic_1164.all;

entity xfc_shift_left is
  generic (width  : positive;    -- bits of the value
           levels : positive;    -- bits of the distance
           unit   : positive);   -- bits that the lowest bit of the distance stands for
  port (value    : in std_logic_vector(width - 1 downto 0);
        distance : in std_logic_vector(levels - 1 downto 0);
        fill     : in std_logic;
        shifted  : out std_logic_vector(width - 1 downto 0));
end xfc_shift_left;

architecture rtl of xfc_shift_left is
begin
  shift : process (value, distance, fill)
    variable current : std_logic_vector(width - 1 downto 0);
    variable amount  : positive;
  begin
    current := value;
    for level in levels - 1 downto 0 loop
      amount := unit * 2 ** level;
      if distance(level) = '1' then
        for i in width - 1 downto 0 loop
          if i >= amount then
            current(i) := current(i - amount);
          else
            current(i) := fill;
          end if;
        end loop;
      end if;
    end loop;
    shifted <= current;
  end process;
end rtl;
